// SPDX-License-Identifier: MIT
#include "SkinBackup.h"

#include "HostFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

SkinBackup::SkinBackup(const QString &path)
    : mPath(path)
    , mBackup(pathFor(path))
{
    if (!mBackup.isEmpty())
        mKept = mBackup + QStringLiteral(".new");
}

SkinBackup::~SkinBackup()
{
    if (mKeeping)
        QFile::remove(mKept);
}

QString SkinBackup::pathFor(const QString &path)
{
    const QFileInfo info(path);
    const QString name = info.fileName();
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const QString backupName = (dot < 0 ? name : name.left(dot)) + QStringLiteral(".bak");
    if (backupName == name)
        return QString();
    // A path as the user typed it on Windows has backslashes; a name cut at
    // "/" alone would put the backup in the current folder there.
    const qsizetype slash = qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QDir::separator()));
    return path.left(slash + 1) + backupName;
}

// Where the file system allows it, the kept file is the file itself under a
// second name: the new text goes to a new file that then takes the file's
// name, so the old bytes stay with the backup without being copied. Elsewhere,
// and for a link to a file (whose second name would follow the new text), it
// is a copy.
bool SkinBackup::keep(QString &error)
{
    const QFileInfo file(mPath);
    if (mBackup.isEmpty() || !file.exists())
        return true;
    // A temporary copy left by a save that was killed is of no use.
    if (QFileInfo::exists(mKept) && !QFile::remove(mKept)) {
        error = QStringLiteral("%1: cannot be replaced").arg(QDir::toNativeSeparators(mKept));
        return false;
    }
    mKeeping = true;
    if (file.isFile() && !file.isSymLink() && HostFiles::addSecondName(mPath, mKept))
        return true;
    QFile current(mPath);
    if (!current.copy(mKept)) {
        error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(mKept), current.errorString());
        return false;
    }
    return true;
}

bool SkinBackup::finish(QString &error)
{
    if (!mKeeping)
        return true;
    QString reason;
    if (!HostFiles::replaceWith(mKept, mBackup, reason)) {
        error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(mBackup), reason);
        return false;
    }
    mKeeping = false;
    return true;
}
