// SPDX-License-Identifier: MIT
#include "SkinFolderListing.h"

#include <QDir>

namespace SkinFolderListing {

QStringList uiFilesIn(const QString &folder)
{
    if (folder.isEmpty())
        return {};
    const QDir dir(folder);
    QStringList files;
    for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase)) {
        if (name.toLatin1().toLower().endsWith(".ui"))
            files << dir.filePath(name);
    }
    return files;
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
