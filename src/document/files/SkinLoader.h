// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class SkinReadError;
class clsKorviInterface;

// Reading a skin file the way the editor's Open command does, in one call: the
// skin's opening plan for the file (SkinOpenPlan::forFile), read. For the
// command-line tool, the tests and the benchmarks.
namespace SkinLoader {

// What opening a skin file read.
struct OpenedSkin
{
    // "####_###" or "###_###" taken from the end of the file's name, or empty when it has none
    // (the caller then keeps the format it had).
    QString skinFormat;
    // Every file read, in reading order, the opened file last.
    QStringList filesRead;
};

// The format at the end of the file's name (SkinFormatName::fromFileName).
QString skinFormatFromFileName(const QString &path);

// Told of a file that could not be read to its end; what was read before the
// error stays in the document.
using ReadErrorHandler = std::function<void(const SkinReadError &error)>;

// Reads the template files and the shared scheme (imported), then the file
// (not imported), into the document, adding to what is there. With a handler,
// a reading error is handed to it and the next file is read; without one, the
// error propagates (SkinReadError) and nothing more is read.
OpenedSkin openSkinFile(clsKorviInterface &document, const QString &path,
                        const ReadErrorHandler &onError = {});

} // namespace SkinLoader
