#include "EditSurface.h"

#include "ObjectTreeModel.h"

NodeTarget EditSurface::resolve(const QByteArray &nodeKey) const
{
    const QModelIndex index = tree.indexOfKey(nodeKey);
    return index.isValid() ? tree.resolve(index) : tree.ResolveNodeKey(nodeKey);
}

QModelIndex EditSurface::node(const QByteArray &nodeKey) const
{
    return tree.indexOfKey(nodeKey);
}

void EditSurface::show(const QByteArray &nodeKey) const
{
    if (showNode)
        showNode(nodeKey);
}
