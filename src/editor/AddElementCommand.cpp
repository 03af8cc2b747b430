#include "AddElementCommand.h"

#include "EditSurface.h"
#include "ElementPlace.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsElements.h"

AddElementCommand::AddElementCommand(EditSurface &surface, const QByteArray &parentNodeKey,
                                     const QByteArray &name, const QByteArray &type)
    : mSurface(surface)
    , mParentKey(parentNodeKey)
    , mName(name)
    , mType(type)
    , mShownBefore(surface.selectedNodeKey ? surface.selectedNodeKey() : parentNodeKey)
{
    setText(QStringLiteral("Add %1 %2").arg(QString::fromLatin1(type), QString::fromLatin1(name)));
}

AddElementCommand::~AddElementCommand() = default;

void AddElementCommand::redo()
{
    clsElements *collection = ElementPlace::collectionUnder(mSurface, mParentKey);
    if (!collection)
        return;
    const QModelIndex parentNode = mParentKey.isEmpty() ? QModelIndex() : mSurface.node(mParentKey);
    if (!mTaken) {
        clsElement *element = collection->Add(mName, mType);
        mPosition = collection->Count() - 1;
        const char letter = ElementPlace::letterFor(*element, mParentKey);
        const QByteArray prefix = ElementPlace::prefixFor(mParentKey, letter);
        const QModelIndex node = mSurface.tree.AddElementNode(element, parentNode, prefix);
        mRow = node.row();
        mNodeKey = prefix + element->ElementKey();
    } else {
        clsElement *element = collection->Insert(mPosition, std::move(mTaken));
        mSurface.tree.InsertElementNode(element, parentNode, mRow, ElementPlace::letterFor(*element, mParentKey));
    }
    // A new layer is only added to the tree; a new object is drawn on its layer.
    if (!mParentKey.isEmpty())
        mSurface.show(mParentKey);
}

void AddElementCommand::undo()
{
    clsElements *collection = ElementPlace::collectionUnder(mSurface, mParentKey);
    if (!collection || mNodeKey.isEmpty() || mTaken)
        return;
    mTaken = collection->Take(mPosition);
    mSurface.tree.RemoveNode(mSurface.node(mNodeKey));
    mSurface.show(mShownBefore);
}
