// SPDX-License-Identifier: MIT
#include "SkinFileWatcher.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// Programs write a file in several steps (empty it, write, rename): the
// notifications of one save are taken together.
constexpr int kSettleMs = 200;

} // namespace

SkinFileWatcher::SkinFileWatcher(QObject *parent)
    : QObject(parent)
{
    mSettle.setSingleShot(true);
    mSettle.setInterval(kSettleMs);
    connect(&mSettle, &QTimer::timeout, this, &SkinFileWatcher::report);
    connect(&mWatcher, &QFileSystemWatcher::fileChanged, this, &SkinFileWatcher::somethingMoved);
    connect(&mWatcher, &QFileSystemWatcher::directoryChanged, this, &SkinFileWatcher::somethingMoved);
}

void SkinFileWatcher::watch(const QStringList &files)
{
    stop();
    for (const QString &file : files) {
        const QString path = QFileInfo(file).absoluteFilePath();
        mKnown.insert(path, fingerprintOf(path, nullptr));
    }
    watchOnDisk();
}

void SkinFileWatcher::stop()
{
    mSettle.stop();
    mKnown.clear();
    if (!mWatcher.files().isEmpty())
        mWatcher.removePaths(mWatcher.files());
    if (!mWatcher.directories().isEmpty())
        mWatcher.removePaths(mWatcher.directories());
}

void SkinFileWatcher::takeAsKnown()
{
    for (auto it = mKnown.begin(); it != mKnown.end(); ++it)
        it.value() = fingerprintOf(it.key(), nullptr);
    watchOnDisk();
}

// The contents are read again only when the size or the time says the file
// may have changed.
SkinFileWatcher::Fingerprint SkinFileWatcher::fingerprintOf(const QString &path, const Fingerprint *known)
{
    Fingerprint print;
    const QFileInfo info(path);
    print.exists = info.isFile();
    if (!print.exists)
        return print;
    print.size = info.size();
    print.modified = info.lastModified();
    if (known && known->exists && known->size == print.size && known->modified == print.modified) {
        print.hash = known->hash;
        return print;
    }
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        QCryptographicHash hash(QCryptographicHash::Sha1);
        hash.addData(&file);
        print.hash = hash.result();
    }
    return print;
}

void SkinFileWatcher::somethingMoved(const QString &)
{
    mSettle.start();
}

void SkinFileWatcher::report()
{
    QStringList changed;
    QStringList deleted;
    for (auto it = mKnown.begin(); it != mKnown.end(); ++it) {
        const Fingerprint now = fingerprintOf(it.key(), &it.value());
        if (now.exists == it->exists && now.hash == it->hash)
            continue;
        (now.exists ? changed : deleted) << it.key();
        // Told once: the same change is not reported again.
        it.value() = now;
    }
    watchOnDisk();
    if (!changed.isEmpty() || !deleted.isEmpty())
        emit filesChanged(changed, deleted);
}

// A file replaced or deleted leaves the watch list; it is put back when it is
// there again.
void SkinFileWatcher::watchOnDisk()
{
    QStringList paths;
    for (auto it = mKnown.cbegin(); it != mKnown.cend(); ++it) {
        const QFileInfo info(it.key());
        if (info.isFile() && !mWatcher.files().contains(it.key()))
            paths << it.key();
        if (info.absoluteDir().exists() && !mWatcher.directories().contains(info.absolutePath())
            && !paths.contains(info.absolutePath()))
            paths << info.absolutePath();
    }
    if (!paths.isEmpty())
        mWatcher.addPaths(paths);
}
