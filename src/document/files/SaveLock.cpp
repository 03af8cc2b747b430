// SPDX-License-Identifier: MIT
#include "SaveLock.h"

#include <QDir>

SaveLock::SaveLock(const QString &path)
    : mPath(path)
    , mLock(lockPathFor(path))
{
    // A save takes well under a second; a lock older than this is left by a
    // program that hangs or died on another host.
    mLock.setStaleLockTime(60000);
}

SaveLock::~SaveLock() = default;

bool SaveLock::lock(QString &error, int waitMs)
{
    if (mLock.tryLock(waitMs))
        return true;
    const QString path = QDir::toNativeSeparators(mPath);
    switch (mLock.error()) {
    case QLockFile::LockFailedError:
        error = QStringLiteral("%1 is being saved by another program; nothing written").arg(path);
        break;
    case QLockFile::PermissionError:
        error = QStringLiteral("%1: cannot create %2: Permission denied")
                    .arg(path, QDir::toNativeSeparators(lockPathFor(mPath)));
        break;
    default:
        error = QStringLiteral("%1: cannot create %2").arg(path, QDir::toNativeSeparators(lockPathFor(mPath)));
        break;
    }
    return false;
}
