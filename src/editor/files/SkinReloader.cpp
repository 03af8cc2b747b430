// SPDX-License-Identifier: MIT
#include "SkinReloader.h"

#include "ObjectTreeModel.h"
#include "ReloadBar.h"
#include "SkinDocument.h"
#include "SkinFileWatcher.h"
#include "clsKorviInterface.h"

#include <QFileInfo>
#include <QTreeView>
#include <QUndoStack>

namespace {

QString names(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names << QFileInfo(path).fileName();
    return names.join(QStringLiteral(", "));
}

QString whatHappened(const QStringList &changed, const QStringList &deleted)
{
    QStringList parts;
    if (!changed.isEmpty())
        parts << QStringLiteral("%1 changed on disk").arg(names(changed));
    if (!deleted.isEmpty())
        parts << QStringLiteral("%1 deleted on disk").arg(names(deleted));
    return parts.join(QStringLiteral("; "));
}

} // namespace

SkinReloader::SkinReloader(SkinDocument &document, ObjectTreeModel &tree, QTreeView &view, ReloadBar &bar,
                           QObject *parent)
    : QObject(parent)
    , mDocument(document)
    , mTree(tree)
    , mView(view)
    , mBar(bar)
    , mWatcher(new SkinFileWatcher(this))
{
    setObjectName(QStringLiteral("SkinReloader"));
    connect(mWatcher, &SkinFileWatcher::filesChanged, this, &SkinReloader::filesChanged);
    connect(&mBar, &ReloadBar::reloadChosen, this, &SkinReloader::reloadKeepingView);
    // Undoing back to what was saved is no reason to take the disk as known,
    // but saving is: the history is marked clean then.
    connect(&mDocument.undoStack(), &QUndoStack::cleanChanged, this, [this](bool clean) {
        if (clean)
            skinSaved();
    });
}

void SkinReloader::skinOpened(const QStringList &files)
{
    mBar.hide();
    mWatcher->watch(files);
}

void SkinReloader::skinSaved()
{
    mWatcher->takeAsKnown();
}

// A deleted file is always asked about: reading the skin without it would
// take its objects out of the editor too.
void SkinReloader::filesChanged(const QStringList &changed, const QStringList &deleted)
{
    const QString what = whatHappened(changed, deleted);
    if (!deleted.isEmpty()) {
        mBar.offer(what + QStringLiteral(". Reload the skin without it, or keep what the editor has?"));
        return;
    }
    if (!mDocument.undoStack().isClean()) {
        mBar.offer(what + QStringLiteral(". Reload the skin and lose the unsaved changes, or keep them?"));
        return;
    }
    reloadKeepingView();
    emit told(what + QStringLiteral(": the skin was read again"));
}

void SkinReloader::mergedOnDisk(const QStringList &files)
{
    reloadKeepingView();
    emit told(QStringLiteral("%1 held changes made on disk: saved with yours and read again").arg(names(files)));
}

void SkinReloader::reloadKeepingView()
{
    mBar.hide();
    const QByteArray current = mDocument.currentKey();
    const QList<QByteArray> unfolded = unfoldedKeys();
    emit reopenWanted();
    // Parents come before their children in the list, so each is unfolded
    // before its children are looked up.
    for (const QByteArray &key : unfolded) {
        const QModelIndex node = mTree.indexOfKey(key);
        if (node.isValid())
            mView.expand(node);
    }
    if (!current.isEmpty() && mDocument.resolve(current).found)
        mDocument.setCurrent(current);
}

QList<QByteArray> SkinReloader::unfoldedKeys() const
{
    QList<QByteArray> keys;
    QList<QModelIndex> pending { QModelIndex() };
    while (!pending.isEmpty()) {
        const QModelIndex parent = pending.takeFirst();
        for (int row = 0; row < mTree.rowCount(parent); ++row) {
            const QModelIndex node = mTree.index(row, 0, parent);
            if (!mView.isExpanded(node))
                continue;
            keys << mTree.nodeKey(node);
            pending << node;
        }
    }
    return keys;
}
