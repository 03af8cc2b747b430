// SPDX-License-Identifier: MIT
#pragma once

#include "SkinSourceFile.h"

#include <memory>
#include <vector>

// The files read into one document, in reading order. An element read from a
// file names it by its number here.
class SkinSources
{
public:
    // Numbers go from 1; 0 is "read from no file".
    static constexpr int kMostFiles = 0xFFFF;

    // The new file's number, or 0 when no more files can be numbered.
    int add(const QString &path, const QByteArray &bytes, bool imported);
    int count() const { return int(mFiles.size()); }
    // By number (1-based); nullptr when there is none.
    SkinSourceFile *file(int number) const;
    // The number of the last file read from `path` (compared as absolute,
    // cleaned paths), 0 when there is none.
    int numberOf(const QString &path) const;
    // Puts a file in place of another under its number (its records must
    // stand for the same elements).
    void replace(int number, std::unique_ptr<SkinSourceFile> file) { mFiles[size_t(number - 1)] = std::move(file); }
    // A newer reading of a file takes a new number; the old number keeps no
    // bytes and no records, so that an element still naming it (one held for
    // an undo, say) counts as new. Returns the new number.
    int supersede(int number, std::unique_ptr<SkinSourceFile> file);
    // Takes in a file read elsewhere under the next number; 0 when no more
    // files can be numbered.
    int adopt(std::unique_ptr<SkinSourceFile> file);
    // Takes a file out, leaving no file under its number.
    std::unique_ptr<SkinSourceFile> take(int number);
    void clear() { mFiles.clear(); }
    qsizetype memoryUsed() const;

private:
    std::vector<std::unique_ptr<SkinSourceFile>> mFiles;
};
