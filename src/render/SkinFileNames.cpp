// SPDX-License-Identifier: MIT
#include "SkinFileNames.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace SkinFileNames {

QString GetFileName(const QString &path, bool keepExtension)
{
    const qsizetype slash = qMax(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
    QString name = path.mid(slash + 1);
    const qsizetype hash = name.indexOf(QLatin1Char('#'));
    if (hash >= 0)
        name.truncate(hash);
    name.remove(QLatin1Char('$'));
    if (!keepExtension) {
        const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
        if (dot >= 0)
            name.truncate(dot);
    }
    return name;
}

QString GetExtension(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    if (dot < 0)
        return QString();
    return AsciiLower(path.mid(dot + 1));
}

QString GetParentFolder(const QString &path)
{
    const qsizetype separator = path.lastIndexOf(QDir::separator());
    if (separator < 0)
        return QString();
    return path.left(separator);
}

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

bool FileExists(const QString &path)
{
    FileStamp ignored;
    return FileExists(path, ignored);
}

bool FileExists(const QString &path, FileStamp &stamp)
{
    if (path.isEmpty())
        return false;
#ifdef Q_OS_UNIX
    // Every lookup probes the disk, so a probe is kept to the bare calls: open
    // for reading, look at what was opened, close. A folder opens on this host
    // but is not a file that can be read, so it does not count.
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
    stamp = StampOf(path);
    return true;
#endif
}

FileStamp StampOf(const QString &path)
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

QString AsciiLower(const QString &text)
{
    QString lower = text;
    for (QChar &c : lower) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + ('a' - 'A'));
    }
    return lower;
}

} // namespace SkinFileNames
