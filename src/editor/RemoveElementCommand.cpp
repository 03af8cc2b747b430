#include "RemoveElementCommand.h"

#include "EditSurface.h"
#include "ElementPlace.h"
#include "ObjectTreeModel.h"
#include "clsElements.h"

RemoveElementCommand::RemoveElementCommand(EditSurface &surface, const QByteArray &elementNodeKey)
    : mSurface(surface)
    , mNodeKey(elementNodeKey)
    , mShownBefore(surface.selectedNodeKey ? surface.selectedNodeKey() : elementNodeKey)
{
    const QModelIndex node = surface.node(elementNodeKey);
    const NodeTarget target = surface.resolve(elementNodeKey);
    if (!node.isValid() || !target.found || !target.property.isNull())
        return;
    mParentKey = surface.tree.nodeKey(node.parent());
    clsElements *collection = ElementPlace::collectionUnder(surface, mParentKey);
    mPosition = collection ? collection->IndexOf(target.element) : -1;
    mRow = node.row();
    mLetter = ElementPlace::letterFor(*target.element, mParentKey);
    mValid = mPosition >= 0;
    setText(QStringLiteral("Remove %1").arg(QString::fromLatin1(target.element->strName())));
}

RemoveElementCommand::~RemoveElementCommand() = default;

void RemoveElementCommand::redo()
{
    clsElements *collection = ElementPlace::collectionUnder(mSurface, mParentKey);
    if (!mValid || !collection || mTaken)
        return;
    mTaken = collection->Take(mPosition);
    mSurface.tree.RemoveNode(mSurface.node(mNodeKey));
    mSurface.show(mParentKey);
}

void RemoveElementCommand::undo()
{
    clsElements *collection = ElementPlace::collectionUnder(mSurface, mParentKey);
    if (!mValid || !collection || !mTaken)
        return;
    clsElement *element = collection->Insert(mPosition, std::move(mTaken));
    const QModelIndex parentNode = mParentKey.isEmpty() ? QModelIndex() : mSurface.node(mParentKey);
    mSurface.tree.InsertElementNode(element, parentNode, mRow, mLetter);
    mSurface.show(mShownBefore);
}
