// SPDX-License-Identifier: MIT
#include "SkinCodec.h"
#include "ElementCommands.h"

#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsElements.h"

AddElementCommand::AddElementCommand(SkinDocument &document, const QByteArray &parentNodeKey,
                                     const QByteArray &name, const QByteArray &type)
    : mDocument(document)
    , mParentKey(parentNodeKey)
    , mName(name)
    , mType(type)
    , mShownBefore(document.currentKey())
{
    setText(QStringLiteral("Add %1 %2").arg(SkinCodec::wordText(type), SkinCodec::wordText(name)));
}

AddElementCommand::~AddElementCommand() = default;

void AddElementCommand::redo()
{
    const clsElement *element = mTaken ? mDocument.insertElement(mParentKey, mIndex, std::move(mTaken))
                                       : mDocument.addElement(mParentKey, mName, mType);
    if (!element) {
        setObsolete(true);
        return;
    }
    const NodeKey parent(mParentKey);
    mIndex = mDocument.childrenOf(mParentKey)->positionOf(element);
    mNodeKey = parent.isEmpty() ? NodeKey::block(*element) : parent.child(*element);
    // A new layer is only added to the tree; a new object is selected on its
    // layer, ready for its properties.
    if (!mParentKey.isEmpty())
        mDocument.setCurrent(mNodeKey);
}

void AddElementCommand::undo()
{
    mDocument.setCurrent(mShownBefore);
    mTaken = mDocument.takeElement(mParentKey, mIndex);
    if (!mTaken)
        setObsolete(true);
}

RemoveElementCommand::RemoveElementCommand(SkinDocument &document, const QByteArray &elementNodeKey)
    : mDocument(document)
    , mNodeKey(elementNodeKey)
    , mParentKey(NodeKey(elementNodeKey).parent())
    , mShownBefore(document.currentKey())
{
    const clsElement *element = document.elementAt(elementNodeKey);
    const clsElements *collection = document.childrenOf(mParentKey);
    if (!element || !collection)
        return;
    mIndex = collection->positionOf(element);
    setText(QStringLiteral("Remove %1").arg(SkinCodec::wordText(element->strName())));
}

RemoveElementCommand::~RemoveElementCommand() = default;

void RemoveElementCommand::redo()
{
    if (isValid())
        mDocument.setCurrent(mParentKey);
    mTaken = isValid() ? mDocument.takeElement(mParentKey, mIndex) : nullptr;
    if (!mTaken)
        setObsolete(true);
}

void RemoveElementCommand::undo()
{
    if (!mDocument.insertElement(mParentKey, mIndex, std::move(mTaken))) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mShownBefore);
}
