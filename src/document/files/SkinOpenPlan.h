// SPDX-License-Identifier: MIT
#pragma once

#include "SkinReadError.h"

#include <QString>
#include <QVector>

class clsKorviInterface;

// The files the editor reads for a skin, in order, and the values it then
// holds: Open reads the template files beside the chosen file and the shared
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

    // Reads every file of the plan into the document, in order. A file that
    // cannot be read, or whose reading stops at a line, does not stop the
    // others; what was read before that line stays. Returns the errors met.
    QVector<SkinReadError> readInto(clsKorviInterface &document) const;
};
