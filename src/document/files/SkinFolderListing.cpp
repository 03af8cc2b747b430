// SPDX-License-Identifier: MIT
#include "SkinFolderListing.h"

#include "HostFiles.h"

#include <QDir>
#include <QFileInfo>

namespace {

QByteArray lowerName(const QString &name)
{
    return name.toLatin1().toLower();
}

// The skin files of `folder` whose lower-case names begin with `prefix`.
QStringList skinFilesIn(const QString &folder, const char *prefix)
{
    if (folder.isEmpty())
        return {};
    const QDir dir(folder);
    QStringList files;
    for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase)) {
        const QString path = QDir::cleanPath(dir.absoluteFilePath(name));
        if (lowerName(name).startsWith(prefix) && SkinFolderListing::isSkinFile(path))
            files << path;
    }
    return files;
}

} // namespace

namespace SkinFolderListing {

bool isSkinFile(const QString &path)
{
    FileStamp ignored;
    return lowerName(QFileInfo(path).fileName()).endsWith(".ui") && HostFiles::isReadableFile(path, ignored);
}

QStringList uiFilesIn(const QString &folder)
{
    return skinFilesIn(folder, "");
}

QStringList templateFilesIn(const QString &folder)
{
    return skinFilesIn(folder, "templates");
}

QStringList formatNamesIn(const QString &folder)
{
    if (folder.isEmpty())
        return {};
    const QDir dir(folder);
    QStringList names;
    const auto filters = QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot;
    for (const QString &name : dir.entryList(filters, QDir::Name | QDir::IgnoreCase)) {
        if (name.contains(QLatin1Char('_')) && !name.contains(QLatin1Char('.')))
            names << name;
    }
    return names;
}

} // namespace SkinFolderListing
