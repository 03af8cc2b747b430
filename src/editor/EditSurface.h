#pragma once

#include "NodeTarget.h"

#include <QByteArray>
#include <QModelIndex>

#include <functional>

class ObjectTreeModel;

// What an edit of the document needs besides the document itself: the object
// tree whose nodes follow the change, and the window's node-click handling,
// which shows a node again (canvas, grid, moving frame) once the document and
// the node text are up to date. Every change runs in that order: document,
// node, display.
struct EditSurface
{
    ObjectTreeModel &tree;
    // Selects the node with this key in the tree (unfolding the way to it) and
    // runs the node-click handling; a key that names no node clears the display.
    std::function<void(const QByteArray &nodeKey)> showNode;
    // The key of the node selected before the change, shown again by an undo.
    std::function<QByteArray()> selectedNodeKey;

    // What the node with this key names; header variables are found through
    // their place under "HEADERS", as the tree knows it.
    NodeTarget resolve(const QByteArray &nodeKey) const;
    QModelIndex node(const QByteArray &nodeKey) const;
    void show(const QByteArray &nodeKey) const;
};
