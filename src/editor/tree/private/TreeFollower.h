// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class ObjectTreeModel;
class QModelIndex;
class QTreeView;
class SkinDocument;

// The object tree as a view of the document's current node: a node the user
// picks becomes the current node, and whatever makes another node current
// (the canvas, a command, the Problems panel) finds the tree unfolded to it and
// showing it selected. The document holds the one selection; moving the tree
// to a node that is already current asks nothing more of it.
class TreeFollower : public QObject
{
    Q_OBJECT

public:
    TreeFollower(QTreeView &view, const ObjectTreeModel &tree, SkinDocument &document, QObject *parent = nullptr);

    // Unfolds the way to the node and shows it in view.
    static void reveal(QTreeView &view, const QModelIndex &node);

private:
    void nodePicked(const QModelIndex &node);
    void currentChanged(const QByteArray &nodeKey);

    QTreeView &mView;
    const ObjectTreeModel &mTree;
    SkinDocument &mDocument;
};
