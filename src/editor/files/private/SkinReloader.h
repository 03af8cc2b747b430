// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>

class ObjectTreeModel;
class QTreeView;
class ReloadBar;
class SkinDocument;
class SkinFileWatcher;

// Reads the skin again when one of its files changes on disk. Without unsaved
// changes it does so at once, keeping the current node and the unfolded nodes
// by their keys; with unsaved changes, or when a file was deleted, the reload
// bar asks first. Nothing is ever written: a deleted file stays deleted until
// the user saves.
class SkinReloader : public QObject
{
    Q_OBJECT

public:
    SkinReloader(SkinDocument &document, ObjectTreeModel &tree, QTreeView &view, ReloadBar &bar,
                 QObject *parent = nullptr);

    // Reads the skin again exactly as it was opened, asking nothing.
    std::function<void()> reopen;
    // Says something in the status bar.
    std::function<void(const QString &)> tell;

    // The skin was just opened: its files are watched from now on.
    void skinOpened();
    // The skin was just written: what is on disk now is no outside change.
    void skinSaved();
    SkinFileWatcher &watcher() const { return *mWatcher; }

private:
    void filesChanged(const QStringList &changed, const QStringList &deleted);
    void reloadKeepingView();
    QList<QByteArray> unfoldedKeys() const;

    SkinDocument &mDocument;
    ObjectTreeModel &mTree;
    QTreeView &mView;
    ReloadBar &mBar;
    SkinFileWatcher *mWatcher;
};
