// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

// Reading a whole file with every error checked: a read that fails half-way,
// or a file that shrank while it was read, never passes for the end of the
// file. Folders, devices and pipes are refused before they are opened, so a
// pipe with no writer cannot hold a command forever.
namespace FileReading {

// Why `path` cannot be read as a file ("is a folder", "is not a regular
// file"); empty for a regular file and for a path where nothing is (opening
// it says so then).
QString notAFile(const QString &path);

// The whole file; false with `error` naming the file and the system's reason.
bool readWhole(const QString &path, QByteArray &bytes, QString &error);

// The rest of `device`; false with `why` (the reason alone) when a read fails
// or fewer bytes come than the device's size promised.
bool readDevice(QIODevice &device, QByteArray &bytes, QString &why);

// "is UTF-16 text; skin files are 8-bit text" for bytes that are UTF-16 text
// (with or without a byte-order mark); empty otherwise.
QString wideTextProblem(const QByteArray &bytes);

} // namespace FileReading
