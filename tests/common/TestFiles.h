// SPDX-License-Identifier: MIT
#pragma once

// Reading and writing the files a test makes for itself.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

// Writes `bytes` to `path`, making the folders on the way; false when the file
// cannot be written whole.
inline bool writeTestFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The bytes of `path`; empty when it cannot be read.
inline QByteArray readTestFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The main file of the demo skin in the source tree.
inline QString demoSkinMainFile()
{
    return QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin/800_480/ui/main_800_480.ui");
}
