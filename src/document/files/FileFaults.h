// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Faults made on demand, so that the handling of a full disk or a failing
// read can be tried on every host without a special file system. The
// environment variable KORVI_FAIL_WRITES names files (by file name, separated
// by "|"; "-" is the standard output) whose writing fails as on a full disk;
// KORVI_FAIL_READS names files whose reading fails half-way as on a bad disk;
// KORVI_FAIL_MEMORY names skin files whose reading runs out of memory.
// Unset, as it is for every user, nothing fails.
namespace FileFaults {

// The system's reason for a failed write of `path`, or empty when it is to be
// written normally.
QString writeFault(const QString &path);
// Likewise for reading `path`.
QString readFault(const QString &path);

// Whether reading the skin file `path` is to run out of memory.
bool memoryFault(const QString &path);

// The texts the faults give, as the system says them.
inline QString diskFull() { return QStringLiteral("No space left on device"); }
inline QString inputOutputError() { return QStringLiteral("Input/output error"); }

} // namespace FileFaults
