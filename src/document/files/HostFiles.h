// SPDX-License-Identifier: MIT
#pragma once

#include "FileStamp.h"

#include <QString>

// The one place where the program calls the host system's file functions
// itself rather than through Qt: where Qt has no such call (a second name for
// a file), or where its portable way costs more than a picture lookup that
// probes the disk thousands of times per drawing can afford. Every function
// has a portable fallback for hosts without the fast path.
namespace HostFiles {

// Whether `path` opens for reading and is not a folder; on success `stamp`
// gets its size and modification time.
bool isReadableFile(const QString &path, FileStamp &stamp);

// The size and modification time of whatever is at `path` (a folder too); size
// -1 when nothing is there.
FileStamp stampOf(const QString &path);

// Gives the file at `path` the second name `secondName` (a hard link), so
// that both names show the same bytes until one of them is replaced. False
// where the host or the file system has no such names, or the call fails;
// nothing is changed then.
bool addSecondName(const QString &path, const QString &secondName);

// Who owns a file: kept across a save that replaces the file with a new one.
struct Owner
{
    qint64 user = -1;
    qint64 group = -1;
};
// The owner of the file at `path`; -1s where nothing is there or the host has
// no such owners.
Owner ownerOf(const QString &path);
// Gives the file at `path` back to `owner` when it now belongs to someone
// else (a save by root makes the new file root's). Best effort: a host or a
// user that cannot do it leaves the file as it is.
void giveOwner(const QString &path, const Owner &owner);

// Renames `from` to `to`, replacing a file of that name in one step, so that
// `to` is at every moment the old file or the new one. On failure `error`
// gets the system's reason and nothing is changed.
bool replaceWith(const QString &from, const QString &to, QString &error);

} // namespace HostFiles
