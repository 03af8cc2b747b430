// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// Folder listings the way the editor's commands see them: names compared without
// regard to ASCII case, listed in name order with case ignored, so the order of
// reading does not depend on the file system.
//
// Files the host marks hidden are listed like any other: the navigation
// program reads every file of its folders, so a hidden file is as much part of
// the skin as a shown one, and Open and All list the same way.
namespace SkinFolderListing {

// The one rule for "is a skin file", used by every listing and by the checks
// for the shared scheme: a name that ends in ".ui" (ASCII case ignored), and a
// file, not a folder, that can be opened for reading.
bool isSkinFile(const QString &path);

// Full paths of the skin files in `folder`.
QStringList uiFilesIn(const QString &folder);

// Full paths of the skin files in `folder` whose names begin with "templates"
// (ASCII case ignored): the shared template files of the skin's other files.
QStringList templateFilesIn(const QString &folder);

// Names of the entries (folders and files) of `folder` that have no extension
// and hold an "_", as the resolution folders of a skin ("800_480") are named.
QStringList formatNamesIn(const QString &folder);

} // namespace SkinFolderListing
