// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// What a successful look at a file saw: its size and modification time. Two
// equal stamps of one path mean the file has not been replaced or rewritten in
// between, so a picture decoded from it can be used again.
struct FileStamp
{
    qint64 size = -1; // -1: the file was not there
    qint64 modifiedNs = 0; // nanoseconds since the epoch

    bool operator==(const FileStamp &other) const
    {
        return size == other.size && modifiedNs == other.modifiedNs;
    }
    bool operator!=(const FileStamp &other) const { return !(*this == other); }
};
