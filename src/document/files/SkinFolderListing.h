// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// Folder listings the way the editor's commands see them: names compared without
// regard to ASCII case, listed in name order with case ignored, so the order of
// reading does not depend on the file system.
namespace SkinFolderListing {

// Full paths of the files in `folder` whose names end in ".ui".
QStringList uiFilesIn(const QString &folder);

// Names of the entries (folders and files) of `folder` that have no extension
// and hold an "_", as the resolution folders of a skin ("800_480") are named.
QStringList formatNamesIn(const QString &folder);

} // namespace SkinFolderListing
