// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFileInfo>
#include <QString>
#include <stdexcept>

// Reading a skin file stopped at a line it cannot place: a child tag with no
// open block, or an attribute or script line with nothing to receive it. What was
// read before that line stays in the document.
class SkinReadError : public std::runtime_error
{
public:
    SkinReadError(const QString &file, qint64 line, const QString &message)
        : std::runtime_error(describe(file, line, message).toStdString())
        , mFile(file)
        , mLine(line)
        , mMessage(message)
    {
    }

    // Reading `path` ran out of memory: an error of that file like any other,
    // so that what was read of it is never saved over the whole file.
    static SkinReadError outOfMemory(const QString &path)
    {
        const qint64 megabytes = (QFileInfo(path).size() + (1 << 20) - 1) >> 20;
        return SkinReadError(path, 0, QStringLiteral("not enough memory to read %1 (%2 MB)").arg(path).arg(megabytes));
    }

    QString file() const { return mFile; }
    // 1-based number of the line being read.
    qint64 line() const { return mLine; }
    QString message() const { return mMessage; }

    // "FILE, line N: message"; for the file as a whole (line 0) "FILE: message",
    // or "FILE is ..." for a message that says what the file is.
    static QString describe(const QString &file, qint64 line, const QString &message)
    {
        if (line > 0)
            return QStringLiteral("%1, line %2: %3").arg(file).arg(line).arg(message);
        if (message.startsWith(QLatin1String("is ")))
            return file + QLatin1Char(' ') + message;
        return QStringLiteral("%1: %2").arg(file, message);
    }

private:
    QString mFile;
    qint64 mLine;
    QString mMessage;
};
