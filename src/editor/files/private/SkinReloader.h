// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>

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

    // The skin was just opened: the files of its opening plan are watched
    // from now on.
    void skinOpened(const QStringList &files);
    // The skin was just written: what is on disk now is no outside change.
    void skinSaved();
    // A save merged the user's changes into these files, changed on disk:
    // the skin is read again at once, keeping the view, and the status bar says so.
    void mergedOnDisk(const QStringList &files);
    SkinFileWatcher &watcher() const { return *mWatcher; }

signals:
    // The skin is to be read again exactly as it was opened, asking nothing.
    void reopenWanted();
    // Something to say in the status bar.
    void told(const QString &text);

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
