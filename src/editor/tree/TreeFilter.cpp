// SPDX-License-Identifier: MIT
#include "TreeFilter.h"

#include "AsciiCase.h"
#include "NodeKey.h"
#include "SkinCodec.h"
#include "ObjectTreeModel.h"
#include "SkinDocument.h"
#include "SkinElementWalk.h"
#include "clsKorviInterface.h"

#include <QAction>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

const QByteArray kHeadersKey = QByteArrayLiteral("HEADERS");

bool holds(const QByteArray &word, const QByteArray &needle)
{
    return AsciiCase::lowered(word).contains(needle);
}

} // namespace

TreeFilter::TreeFilter(QTreeView &view, ObjectTreeModel &tree, SkinDocument &document, QObject *parent)
    : QObject(parent)
    , mView(view)
    , mTree(tree)
    , mDocument(document)
{
    setObjectName(QStringLiteral("TreeFilter"));
    mPane = new QWidget;
    mPane->setObjectName(QStringLiteral("treePane"));
    mField = new QLineEdit(mPane);
    mField->setObjectName(QStringLiteral("txtTreeFilter"));
    mField->setPlaceholderText(QStringLiteral("Filter: name, type or key"));
    mField->setClearButtonEnabled(true);
    auto *layout = new QVBoxLayout(mPane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(mField);
    layout->addWidget(&view);

    mFind = new QAction(QStringLiteral("&Find in Tree"), this);
    mFind->setObjectName(QStringLiteral("mnuFindInTree"));
    mFind->setShortcut(QKeySequence::Find);
    connect(mFind, &QAction::triggered, this, [this] {
        mField->setFocus(Qt::ShortcutFocusReason);
        mField->selectAll();
    });
    connect(mField, &QLineEdit::textChanged, this, &TreeFilter::apply);
    connect(&view, &QTreeView::expanded, this, &TreeFilter::unfolded);
    // What the document gains or loses is sorted out like everything else.
    auto again = [this] {
        if (mActive)
            apply();
    };
    connect(&document, &SkinDocument::elementInserted, this, again);
    connect(&document, &SkinDocument::elementRemoved, this, again);
    connect(&document, &SkinDocument::propertyAdded, this, again);
    connect(&document, &SkinDocument::propertyRemoved, this, again);
    connect(&document, &SkinDocument::reset, this, again);
}

void TreeFilter::apply()
{
    mApplying = true;
    unhideAll();
    const QByteArray needle = AsciiCase::lowered(SkinCodec::wordBytes(mField->text().trimmed()));
    if (needle.isEmpty()) {
        if (mActive)
            restoreUnfolded();
        mActive = false;
        mApplying = false;
        return;
    }
    if (!mActive) {
        mUnfoldedBefore.clear();
        rememberUnfolded(QModelIndex());
        mActive = true;
    }
    collectMatches(needle);
    showOnly(QModelIndex(), false);
    mApplying = false;
}

void TreeFilter::collectMatches(const QByteArray &needle)
{
    mMatched.clear();
    mAbove.clear();
    const clsKorviInterface &document = mDocument.document();
    SkinElementWalk::forEach(document, [&](const SkinElementWalk::Visit &visit) {
        const clsElement &element = visit.element;
        // Font types and shared templates have no node.
        if (visit.nodeKey.isEmpty() || element.IsImported)
            return;
        if (!holds(element.strName(), needle) && !holds(element.ElementType(), needle)
            && !holds(element.ElementKey(), needle))
            return;
        mMatched.insert(visit.nodeKey);
        for (NodeKey up = NodeKey(visit.nodeKey).parent(); !up.isEmpty(); up = up.parent())
            mAbove.insert(up.bytes());
        if (!visit.parent && document.Headers().positionOf(&element) >= 0)
            mAbove.insert(kHeadersKey);
    });
}

// Hides the children of `parent` that neither match nor lead to a match, and
// unfolds the way to every match.
void TreeFilter::showOnly(const QModelIndex &parent, bool parentMatches)
{
    const int rows = mTree.rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex child = mTree.index(row, 0, parent);
        const QByteArray key = mTree.nodeKey(child);
        const bool matches = mMatched.contains(key);
        const bool above = mAbove.contains(key);
        const bool property = mTree.nodeKind(child) == ObjectTreeNode::Property;
        if (!matches && !above && !(parentMatches && property)) {
            mView.setRowHidden(row, parent, true);
            mHidden << QPersistentModelIndex(child);
            continue;
        }
        if (above)
            mView.expand(child);
        if (above || mView.isExpanded(child))
            showOnly(child, matches);
    }
}

void TreeFilter::unfolded(const QModelIndex &node)
{
    if (mActive && !mApplying)
        showOnly(node, mMatched.contains(mTree.nodeKey(node)));
}

void TreeFilter::unhideAll()
{
    for (const QPersistentModelIndex &hidden : std::as_const(mHidden)) {
        if (hidden.isValid())
            mView.setRowHidden(hidden.row(), hidden.parent(), false);
    }
    mHidden.clear();
}

void TreeFilter::rememberUnfolded(const QModelIndex &parent)
{
    const int rows = mTree.rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex child = mTree.index(row, 0, parent);
        if (mView.isExpanded(child)) {
            mUnfoldedBefore << mTree.nodeKey(child);
            rememberUnfolded(child);
        }
    }
}

// The tree as it was unfolded before, and the current node in view: it may
// have been chosen among the matches.
void TreeFilter::restoreUnfolded()
{
    mView.collapseAll();
    for (const QByteArray &key : std::as_const(mUnfoldedBefore)) {
        const QModelIndex node = mTree.indexOfKey(key);
        if (node.isValid())
            mView.expand(node);
    }
    const QModelIndex current = mTree.indexOfKey(mDocument.currentKey());
    for (QModelIndex up = current.parent(); up.isValid(); up = up.parent())
        mView.expand(up);
    if (current.isValid())
        mView.scrollTo(current);
}
