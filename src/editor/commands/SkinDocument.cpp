// SPDX-License-Identifier: MIT
#include "SkinDocument.h"

#include "NodeKey.h"
#include "SkinContext.h"
#include "clsKorviInterface.h"

#include <QUndoStack>

namespace {

// The key the collection gives a new element named `name`: the name itself
// when it is free, else the first free "name[n]", counting from 0.
QByteArray uniqueKeyIn(const clsElements &children, const QByteArray &name)
{
    if (!children.ItemExist(name))
        return name;
    for (int n = 0;; ++n) {
        const QByteArray key = name + '[' + QByteArray::number(n) + ']';
        if (!children.ItemExist(key))
            return key;
    }
}

} // namespace

SkinDocument::SkinDocument(clsKorviInterface &document, SkinContext &context, QObject *parent)
    : QObject(parent)
    , mDocument(document)
    , mContext(context)
    , mUndoStack(std::make_unique<QUndoStack>())
{
}

SkinDocument::~SkinDocument()
{
    // The commands hold elements taken out of the document; they go first,
    // without telling anybody.
    mUndoStack->disconnect();
    mUndoStack.reset();
}

NodeTarget SkinDocument::resolve(const QByteArray &nodeKey) const
{
    const NodeTarget target = NodeKey::ResolveNodeKey(mDocument, nodeKey);
    return target.found ? target : NodeKey::ResolveHeaderNodeKey(mDocument, nodeKey);
}

clsElement *SkinDocument::elementAt(const QByteArray &nodeKey) const
{
    const NodeTarget target = resolve(nodeKey);
    return target.found && target.property.isNull() ? target.element : nullptr;
}

// The empty key is told every time: it is "no node", and it is also the key of
// a header variable without a name, which is shown each time it is picked.
void SkinDocument::setCurrent(const QByteArray &nodeKey)
{
    if (nodeKey == mCurrentKey && !nodeKey.isEmpty())
        return;
    mCurrentKey = nodeKey;
    emit currentChanged(nodeKey);
}

bool SkinDocument::setPropertyValue(const QByteArray &ownerKey, QByteArrayView propertyKey,
                                    const QByteArray &value)
{
    clsElement *owner = elementAt(ownerKey);
    const int index = owner ? owner->Properties().indexOf(propertyKey) : -1;
    if (index < 0)
        return false;
    if (owner->Properties().valueAt(index) == value)
        return true;
    owner->Properties().setValueAt(index, value);
    emit propertyChanged(ownerKey, index);
    changeMade();
    return true;
}

int SkinDocument::addProperty(const QByteArray &ownerKey, QByteArrayView name, const QByteArray &value)
{
    clsElement *owner = elementAt(ownerKey);
    if (!owner)
        return -1;
    owner->Properties().Add(name, value);
    const int index = owner->Properties().Count() - 1;
    emit propertyAdded(ownerKey, index);
    changeMade();
    return index;
}

bool SkinDocument::insertProperty(const QByteArray &ownerKey, int index, QByteArrayView key,
                                  const QByteArray &value)
{
    clsElement *owner = elementAt(ownerKey);
    if (!owner || index < 0 || index > owner->Properties().Count() || owner->Properties().ItemExist(key))
        return false;
    owner->Properties().Insert(index, key, value);
    emit propertyAdded(ownerKey, index);
    changeMade();
    return true;
}

bool SkinDocument::removeProperty(const QByteArray &ownerKey, QByteArrayView propertyKey)
{
    clsElement *owner = elementAt(ownerKey);
    const int index = owner ? owner->Properties().indexOf(propertyKey) : -1;
    if (index < 0)
        return false;
    emit propertyAboutToBeRemoved(ownerKey, index);
    owner->Properties().removeAt(index);
    emit propertyRemoved(ownerKey, index);
    changeMade();
    return true;
}

clsElements *SkinDocument::childrenOf(const QByteArray &parentKey) const
{
    if (parentKey.isEmpty())
        return &mDocument.Layers();
    clsElement *parent = elementAt(parentKey);
    return parent ? &parent->SubElements() : nullptr;
}

clsElement *SkinDocument::addElement(const QByteArray &parentKey, const QByteArray &name,
                                     const QByteArray &type)
{
    clsElements *children = childrenOf(parentKey);
    if (!children)
        return nullptr;
    clsElement *element = children->Add(name, type);
    emit elementInserted(parentKey, children->Count() - 1);
    changeMade();
    return element;
}

clsElement *SkinDocument::insertElement(const QByteArray &parentKey, int index,
                                        std::unique_ptr<clsElement> element)
{
    clsElements *children = childrenOf(parentKey);
    if (!children || !element || index < 0 || index > children->Count()
        || children->ItemExist(element->keyView()))
        return nullptr;
    clsElement *inserted = children->Insert(index, std::move(element));
    emit elementInserted(parentKey, index);
    changeMade();
    return inserted;
}

clsElement *SkinDocument::insertNewElement(const QByteArray &parentKey, int index,
                                           std::unique_ptr<clsElement> element)
{
    clsElements *children = childrenOf(parentKey);
    if (!children || !element)
        return nullptr;
    element->setElementKey(uniqueKeyIn(*children, element->strName()));
    return insertElement(parentKey, index, std::move(element));
}

// The element goes out and comes back at its place: the tree and the
// collection's keys follow as for any removal and insertion, told as one change.
QByteArray SkinDocument::renameElement(const QByteArray &nodeKey, const QByteArray &name, const QByteArray &key)
{
    const NodeKey parent = NodeKey(nodeKey).parent();
    clsElements *children = childrenOf(parent);
    const int index = children ? children->positionOf(elementAt(nodeKey)) : -1;
    if (index < 0 || (!key.isEmpty() && children->ItemExist(key) && children->indexOf(key) != index))
        return {};
    ChangeBatch batch(*this);
    std::unique_ptr<clsElement> element = takeElement(parent, index);
    element->setStrName(name);
    element->setElementKey(key.isEmpty() ? uniqueKeyIn(*children, name) : key);
    const clsElement *renamed = insertElement(parent, index, std::move(element));
    return parent.isEmpty() ? NodeKey::block(*renamed) : parent.child(*renamed);
}

std::unique_ptr<clsElement> SkinDocument::takeElement(const QByteArray &parentKey, int index)
{
    clsElements *children = childrenOf(parentKey);
    if (!children || index < 0 || index >= children->Count())
        return nullptr;
    emit elementAboutToBeRemoved(parentKey, index);
    std::unique_ptr<clsElement> taken = children->Take(index);
    emit elementRemoved(parentKey, index);
    changeMade();
    return taken;
}

bool SkinDocument::moveElement(const QByteArray &parentKey, int from, int to)
{
    clsElements *children = childrenOf(parentKey);
    if (!children || from < 0 || from >= children->Count() || to < 0 || to >= children->Count())
        return false;
    if (from == to)
        return true;
    ChangeBatch batch(*this);
    return insertElement(parentKey, to, takeElement(parentKey, from)) != nullptr;
}

void SkinDocument::changeMade()
{
    if (mBatchDepth > 0)
        mBatchChanged = true;
    else
        emit changed();
}

void SkinDocument::endBatch()
{
    if (--mBatchDepth > 0 || !mBatchChanged)
        return;
    mBatchChanged = false;
    emit changed();
}

void SkinDocument::setCodec(const SkinCodec &codec)
{
    if (codec == mDocument.codec())
        return;
    mDocument.setCodec(codec);
    emit codecChanged();
    // What is drawn and checked reads the text again.
    emit contextChanged();
}

void SkinDocument::setContext(const SkinContext &context)
{
    if (context.UiFilePath == mContext.UiFilePath && context.SkinDirectory == mContext.SkinDirectory
        && context.SkinFormat == mContext.SkinFormat)
        return;
    mContext = context;
    emit contextChanged();
}

void SkinDocument::reload(const std::function<void(clsKorviInterface &document)> &load)
{
    emit aboutToBeReset();
    mUndoStack->clear();
    mCurrentKey.clear();
    mDocument.Clear();
    if (load)
        load(mDocument);
    emit reset();
}
