#include "RemovePropertyCommand.h"

#include "EditSurface.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsElement.h"

RemovePropertyCommand::RemovePropertyCommand(EditSurface &surface, const QByteArray &propertyNodeKey)
    : mSurface(surface)
    , mShownBefore(surface.selectedNodeKey ? surface.selectedNodeKey() : propertyNodeKey)
{
    const NodeTarget target = surface.resolve(propertyNodeKey);
    const QModelIndex node = surface.node(propertyNodeKey);
    mValid = target.found && !target.property.isNull() && node.isValid();
    if (!mValid)
        return;
    mOwnerKey = surface.tree.nodeKey(node.parent());
    mKey = target.property.Key();
    mValue = target.property.value();
    mPosition = target.property.Index() - 1;
    mRow = node.row();
    setText(QStringLiteral("Remove property %1").arg(QString::fromLatin1(mKey)));
}

void RemovePropertyCommand::redo()
{
    const NodeTarget owner = mSurface.resolve(mOwnerKey);
    if (!mValid || !owner.found)
        return;
    owner.element->Properties().Remove(mKey);
    mSurface.tree.RemoveNode(mSurface.node(mOwnerKey + NodeKey::Separator + 'P' + mKey));
    mSurface.show(mOwnerKey);
}

void RemovePropertyCommand::undo()
{
    const NodeTarget owner = mSurface.resolve(mOwnerKey);
    if (!mValid || !owner.found)
        return;
    owner.element->Properties().Insert(mPosition, mKey, mValue);
    mSurface.tree.InsertPropertyNode(mSurface.node(mOwnerKey), mRow, mKey);
    mSurface.show(mShownBefore);
}
