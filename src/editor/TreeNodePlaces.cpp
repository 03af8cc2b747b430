#include "TreeNodePlaces.h"

#include "ObjectTreeModel.h"

namespace TreeNodePlaces {

QModelIndex insertPropertyNode(ObjectTreeModel &tree, const QModelIndex &owner, int,
                               const QByteArray &propertyKey)
{
    return tree.AddPropertyNode(owner, propertyKey);
}

QModelIndex insertElementNode(ObjectTreeModel &tree, const QModelIndex &parent, int,
                              clsElement *element, char letter)
{
    QByteArray prefix = tree.nodeKey(parent);
    if (!prefix.isEmpty())
        prefix += '|';
    return tree.AddElementNode(element, parent, prefix + letter);
}

} // namespace TreeNodePlaces
