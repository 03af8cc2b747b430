// SPDX-License-Identifier: MIT
#pragma once

#include "FileStamp.h"

#include <QString>

// File-name helpers of the picture lookup. Picture references in skins are
// written with "\" or "/" before the file name; paths built by the editor use the
// host's separator (QDir::separator()).
namespace SkinFileNames {

// The text after the last "\" or "/", cut before the first "#", with every "$"
// removed, and, when keepExtension is false, cut before the last ".".
// "sub\pic$.bmp#2" gives "pic.bmp".
QString GetFileName(const QString &path, bool keepExtension);

// The text after the last ".", in ASCII lower case; empty when there is no ".".
QString GetExtension(const QString &path);

// The text before the last host separator, without it; empty when there is none.
QString GetParentFolder(const QString &path);

// True when the file can be opened for reading; any failure gives false. The path
// is handed to the host file system as it stands, so "U/../F" exists only when
// the folder U exists.
bool FileExists(const QString &path);
// The same, and when the file opens, `stamp` receives its size and modification
// time from that same opening.
bool FileExists(const QString &path, FileStamp &stamp);

// The size and modification time of whatever is at `path` (a folder too); size
// -1 when nothing is there.
FileStamp stampOf(const QString &path);

// Lowers "A" to "Z" only: skins compare names in ASCII case whatever the locale.
QString asciiLower(const QString &text);

} // namespace SkinFileNames
