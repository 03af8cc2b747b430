// SPDX-License-Identifier: MIT
#include "TreeFollower.h"

#include "ObjectTreeModel.h"
#include "SkinDocument.h"

#include <QTreeView>

TreeFollower::TreeFollower(QTreeView &view, const ObjectTreeModel &tree, SkinDocument &document, QObject *parent)
    : QObject(parent)
    , mView(view)
    , mTree(tree)
    , mDocument(document)
{
    setObjectName(QStringLiteral("TreeFollower"));
    connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this, &TreeFollower::nodePicked);
    connect(&document, &SkinDocument::currentChanged, this, &TreeFollower::currentChanged);
}

void TreeFollower::reveal(QTreeView &view, const QModelIndex &node)
{
    for (QModelIndex up = node.parent(); up.isValid(); up = up.parent())
        view.expand(up);
    view.scrollTo(node);
}

// Two nodes may share a key (header variables without a name); they show the
// same thing, so picking the other one changes nothing.
void TreeFollower::nodePicked(const QModelIndex &node)
{
    mDocument.setCurrent(mTree.nodeKey(node));
}

// Setting the view's current node comes back through nodePicked with the key
// that is already current, which the document takes as no change.
void TreeFollower::currentChanged(const QByteArray &nodeKey)
{
    if (mTree.nodeKey(mView.currentIndex()) == nodeKey)
        return;
    const QModelIndex node = mTree.indexOfKey(nodeKey);
    reveal(mView, node);
    mView.setCurrentIndex(node);
}
