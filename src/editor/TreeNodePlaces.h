#pragma once

#include <QByteArray>
#include <QModelIndex>

class ObjectTreeModel;
class clsElement;

// Puts a node back at a given row under its parent, for an undone removal or a
// redone addition, so the tree reads as it did.
namespace TreeNodePlaces {

QModelIndex insertPropertyNode(ObjectTreeModel &tree, const QModelIndex &owner, int row,
                               const QByteArray &propertyKey);
QModelIndex insertElementNode(ObjectTreeModel &tree, const QModelIndex &parent, int row,
                              clsElement *element, char letter);

} // namespace TreeNodePlaces
