// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QStringList>
#include <vector>

// What porting a skin to another screen did and left alone, for the user to
// check: printed as lines and written as JSON.
struct PortReport
{
    // One thing worth a look: a value left as it was, a font size mapped or
    // clamped, an object that uses a picture that keeps its size...
    struct Note
    {
        // "value-kept", "font-mapped", "font-clamped", "font-kept",
        // "shared-picture", "picture-depth", "sprite-frames", "off-screen",
        // "overlap", "script-kept".
        QString kind;
        // The file the note is about, relative to the skin folder.
        QString file;
        QByteArray nodeKey;
        QByteArray key;
        QByteArray value;
        QString message;
    };
    // One picture written at a new size.
    struct Picture
    {
        QString file; // relative to the skin folder, as written
        QString kind; // "BM", "JPEG", "RL"
        QSize from;
        QSize to;
        int frames = 1;
    };

    // The code page the values noted are quoted in.
    SkinCodec codec;
    QString fromFormat;
    QString toFormat;
    double sx = 1;
    double sy = 1;
    QString aspect;
    QString fonts;
    bool dryRun = false;
    // The folders made, relative to the skin folder.
    QStringList targets;
    // The files written (or to be written), relative to the skin folder.
    QStringList files;
    int valuesScaled = 0;
    int formatStringsRewritten = 0;
    std::vector<Note> notes;
    std::vector<Picture> pictures;

    void note(const QString &kind, const QString &file, const QByteArray &nodeKey, const QByteArray &key,
              const QByteArray &value, const QString &message)
    {
        notes.push_back({ kind, file, nodeKey, key, value, message });
    }
    int count(const QString &kind) const;

    // One line per note and picture, then a summary.
    QString text() const;
    QByteArray json() const;
};
