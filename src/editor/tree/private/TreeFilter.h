// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPersistentModelIndex>
#include <QSet>

class ObjectTreeModel;
class QAction;
class QLineEdit;
class QTreeView;
class QWidget;
class SkinDocument;

// The filter field above the object tree. Typed text shows only the nodes of
// elements whose name, type or key holds it (ignoring case), with the nodes
// above them; the properties of a matching element stay under it. Clearing
// the field gives back the tree as it was unfolded before, with the current
// node in view: nodes are hidden, never taken out of the model, so the
// selection and every index the window holds stay as they are.
//
// Nodes are made only when a node is first unfolded. The filter therefore
// searches the document itself, which holds everything, and makes only the
// nodes on the way to what it found (as selecting a node by its key does);
// the children of a matching node are sorted out when it is unfolded.
class TreeFilter : public QObject
{
    Q_OBJECT

public:
    TreeFilter(QTreeView &view, ObjectTreeModel &tree, SkinDocument &document, QObject *parent = nullptr);

    // The field above the tree, in one widget that takes the view in.
    QWidget *pane() const { return mPane; }
    QLineEdit *field() const { return mField; }
    // "Find in Tree" (Ctrl+F): puts the cursor in the field.
    QAction *findAction() const { return mFind; }

    void apply();

private:
    void collectMatches(const QByteArray &needle);
    void showOnly(const QModelIndex &parent, bool parentMatches);
    void unfolded(const QModelIndex &node);
    void unhideAll();
    void rememberUnfolded(const QModelIndex &parent);
    void restoreUnfolded();

    QTreeView &mView;
    ObjectTreeModel &mTree;
    SkinDocument &mDocument;
    QWidget *mPane = nullptr;
    QLineEdit *mField = nullptr;
    QAction *mFind = nullptr;

    bool mActive = false;
    bool mApplying = false;
    // Keys of the nodes that match, and of those on the way to one.
    QSet<QByteArray> mMatched;
    QSet<QByteArray> mAbove;
    QList<QPersistentModelIndex> mHidden;
    // The nodes unfolded before filtering began.
    QList<QByteArray> mUnfoldedBefore;
};
