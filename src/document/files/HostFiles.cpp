// SPDX-License-Identifier: MIT
#include "HostFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace HostFiles {

namespace {

#ifdef Q_OS_UNIX
FileStamp stampOf(const struct stat &info)
{
    FileStamp stamp;
    stamp.size = qint64(info.st_size);
    stamp.modifiedNs = qint64(info.st_mtim.tv_sec) * 1000000000 + qint64(info.st_mtim.tv_nsec);
    return stamp;
}
#endif

} // namespace

bool isReadableFile(const QString &path, FileStamp &stamp)
{
#ifdef Q_OS_UNIX
    // A probe is kept to the bare calls: open for reading, look at what was
    // opened, close. A folder opens on this host but is not a file that can be
    // read, so it does not count.
    const QByteArray native = QFile::encodeName(path);
    int fd;
    do {
        fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0)
        return false;
    struct stat info;
    const bool isFile = ::fstat(fd, &info) == 0 && !S_ISDIR(info.st_mode);
    ::close(fd);
    if (isFile)
        stamp = stampOf(info);
    return isFile;
#else
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    stamp = stampOf(path);
    return true;
#endif
}

FileStamp stampOf(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat info;
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return FileStamp();
    return stampOf(info);
#else
    const QFileInfo info(path);
    FileStamp stamp;
    if (info.exists()) {
        stamp.size = info.size();
        stamp.modifiedNs = info.lastModified().toMSecsSinceEpoch() * 1000000;
    }
    return stamp;
#endif
}

bool addSecondName(const QString &path, const QString &secondName)
{
#if defined(Q_OS_UNIX)
    return ::link(QFile::encodeName(path).constData(), QFile::encodeName(secondName).constData()) == 0;
#elif defined(Q_OS_WIN)
    // NTFS has second names; FAT (a memory card copied from a device) does not.
    const std::wstring file = QDir::toNativeSeparators(path).toStdWString();
    const std::wstring second = QDir::toNativeSeparators(secondName).toStdWString();
    return CreateHardLinkW(second.c_str(), file.c_str(), nullptr) != 0;
#else
    Q_UNUSED(path);
    Q_UNUSED(secondName);
    return false;
#endif
}

Owner ownerOf(const QString &path)
{
    Owner owner;
#ifdef Q_OS_UNIX
    struct stat info;
    if (::stat(QFile::encodeName(path).constData(), &info) == 0) {
        owner.user = qint64(info.st_uid);
        owner.group = qint64(info.st_gid);
    }
#else
    Q_UNUSED(path);
#endif
    return owner;
}

void giveOwner(const QString &path, const Owner &owner)
{
#ifdef Q_OS_UNIX
    if (owner.user < 0)
        return;
    const Owner now = ownerOf(path);
    if (now.user == owner.user && now.group == owner.group)
        return;
    // Whether it works or not, the file is saved: nothing more to do.
    const int done = ::chown(QFile::encodeName(path).constData(), uid_t(owner.user), gid_t(owner.group));
    Q_UNUSED(done);
#else
    Q_UNUSED(path);
    Q_UNUSED(owner);
#endif
}

bool replaceWith(const QString &from, const QString &to, QString &error)
{
#if defined(Q_OS_UNIX)
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return true;
    error = QString::fromLocal8Bit(strerror(errno));
    return false;
#elif defined(Q_OS_WIN)
    const std::wstring source = QDir::toNativeSeparators(from).toStdWString();
    const std::wstring target = QDir::toNativeSeparators(to).toStdWString();
    if (MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    error = qt_error_string(int(GetLastError()));
    return false;
#else
    QFile::remove(to);
    QFile file(from);
    if (file.rename(to))
        return true;
    error = file.errorString();
    return false;
#endif
}

} // namespace HostFiles
