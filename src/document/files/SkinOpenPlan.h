// SPDX-License-Identifier: MIT
#pragma once

#include "SkinReadError.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class clsKorviInterface;

// The one description of the files the editor, korvi and the reload read for
// a skin, in order, and the values it then holds (every file is a skin file by
// SkinFolderListing::isSkinFile, listed in name order with case ignored): Open reads the template files beside the chosen file and the shared
// scheme (imported), then the file; All reads every .ui file of a folder, the
// shared scheme and the common files, all as part of the skin.
struct SkinOpenPlan
{
    struct File
    {
        QString path;
        bool imported = false;
    };

    QVector<File> files;
    // "###_###" from the files' names (the last one that has it), or empty.
    QString skinFormat;
    // The file the pictures are looked up from, and that saving offers.
    QString uiFilePath;
    // Whether the plan reads a whole folder (All) rather than one file (Open).
    bool wholeFolder = false;

    static SkinOpenPlan forFile(const QString &path);
    static SkinOpenPlan forFolder(const QString &folder);

    // What Open reads before the file: the "templates*.ui" skin files beside
    // `path` (without `path` itself), and the shared scheme "main_scheme.ui"
    // in the parent of its folder (empty when that is no skin file).
    static QStringList templateFilesBeside(const QString &path);
    static QString mainSchemeFor(const QString &path);

    // The paths of the files, in reading order.
    QStringList paths() const;

    // Who follows the reading: told of each error as it is met, and of each
    // file once it was read.
    struct Progress
    {
        std::function<void(const SkinReadError &error)> readError;
        std::function<void(const QString &file)> fileDone;
    };

    // Reads every file of the plan into the document, in order. A file that
    // cannot be read, or whose reading stops at a line, does not stop the
    // others; what was read before that line stays. Returns the errors met.
    QVector<SkinReadError> readInto(clsKorviInterface &document, const Progress &progress = {}) const;
};
