#include "AddPropertyCommand.h"

#include "EditSurface.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsElement.h"

AddPropertyCommand::AddPropertyCommand(EditSurface &surface, const QByteArray &ownerNodeKey,
                                       const QByteArray &name, const QByteArray &value)
    : mSurface(surface)
    , mOwnerKey(ownerNodeKey)
    , mName(name)
    , mValue(value)
    , mShownBefore(surface.selectedNodeKey ? surface.selectedNodeKey() : ownerNodeKey)
{
    setText(QStringLiteral("Add property %1").arg(QString::fromLatin1(name)));
}

void AddPropertyCommand::redo()
{
    const NodeTarget owner = mSurface.resolve(mOwnerKey);
    if (!owner.found)
        return;
    clsProperties &properties = owner.element->Properties();
    const QModelIndex ownerNode = mSurface.node(mOwnerKey);
    if (mKey.isEmpty()) {
        mKey = properties.Add(mName, mValue).Key();
        mPosition = properties.Count() - 1;
        mRow = mSurface.tree.AddPropertyNode(ownerNode, mKey).row();
    } else {
        properties.Insert(mPosition, mKey, mValue);
        mSurface.tree.InsertPropertyNode(ownerNode, mRow, mKey);
    }
    mSurface.show(mOwnerKey);
}

void AddPropertyCommand::undo()
{
    const NodeTarget owner = mSurface.resolve(mOwnerKey);
    if (!owner.found || mKey.isEmpty())
        return;
    owner.element->Properties().Remove(mKey);
    mSurface.tree.RemoveNode(mSurface.node(mOwnerKey + NodeKey::Separator + 'P' + mKey));
    mSurface.show(mShownBefore);
}
