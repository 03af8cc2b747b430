// SPDX-License-Identifier: MIT
#include "SkinFileNames.h"

#include "HostFiles.h"

#include <QDir>
#include <QFileInfo>

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
    return asciiLower(path.mid(dot + 1));
}

// The host's separators cut: "/", in which Qt names files on every system, and
// on Windows also "\\", in which its users write paths. (On other systems "\\"
// is a character of a file's name.)
QString GetParentFolder(const QString &path)
{
    const qsizetype separator = qMax(path.lastIndexOf(QDir::separator()), path.lastIndexOf(QLatin1Char('/')));
    if (separator < 0)
        return QString();
    return path.left(separator);
}

bool FileExists(const QString &path)
{
    FileStamp ignored;
    return FileExists(path, ignored);
}

bool FileExists(const QString &path, FileStamp &stamp)
{
    // Every lookup probes the disk, so the probe is the host's cheapest.
    return !path.isEmpty() && HostFiles::isReadableFile(path, stamp);
}

FileStamp stampOf(const QString &path)
{
    return HostFiles::stampOf(path);
}

QString asciiLower(const QString &text)
{
    QString lower = text;
    for (QChar &c : lower) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + ('a' - 'A'));
    }
    return lower;
}

} // namespace SkinFileNames
