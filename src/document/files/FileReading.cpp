// SPDX-License-Identifier: MIT
#include "FileReading.h"

#include "FileFaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace FileReading {

QString notAFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() || info.isFile())
        return QString();
    return info.isDir() ? QStringLiteral("is a folder, not a file") : QStringLiteral("is not a regular file");
}

bool readWhole(const QString &path, QByteArray &bytes, QString &error)
{
    const QString name = QDir::toNativeSeparators(path);
    const auto failed = [&](const QString &why) {
        error = QStringLiteral("%1: %2").arg(name, why);
        bytes.clear();
        return false;
    };
    if (const QString problem = notAFile(path); !problem.isEmpty())
        return failed(problem);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failed(file.errorString());
    if (const QString fault = FileFaults::readFault(path); !fault.isEmpty())
        return failed(fault);
    QString why;
    if (!readDevice(file, bytes, why))
        return failed(why);
    return true;
}

bool readDevice(QIODevice &device, QByteArray &bytes, QString &why)
{
    const qint64 expected = device.isSequential() ? -1 : device.size() - device.pos();
    bytes.clear();
    // The file's own size is read in one go, into a buffer of just that size;
    // a file that reports none (as some system files do), or that grew, is
    // read on to its end a piece at a time.
    if (expected > 0) {
        // Made at its size: growing it would give it the room of a growing
        // array, a quarter more than a large file needs.
        bytes = QByteArray(qsizetype(expected), Qt::Uninitialized);
        const qint64 got = device.read(bytes.data(), expected);
        if (got < 0) {
            why = device.errorString();
            return false;
        }
        bytes.resize(qsizetype(got));
    }
    char piece[1 << 16];
    for (;;) {
        const qint64 got = device.read(piece, qint64(sizeof piece));
        if (got < 0) {
            why = device.errorString();
            return false;
        }
        if (got == 0)
            break;
        bytes.append(piece, qsizetype(got));
    }
    if (expected > 0 && bytes.size() != expected) {
        why = QStringLiteral("%1 of %2 bytes read").arg(bytes.size()).arg(expected);
        return false;
    }
    return true;
}

QString wideTextProblem(const QByteArray &bytes)
{
    const bool byteOrderMark = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
    // Without a mark: ASCII text in UTF-16 has a zero byte beside each of its
    // first characters, which 8-bit text never has.
    const bool zeroBeside = bytes.size() >= 4
        && ((bytes.at(0) != 0 && bytes.at(1) == 0 && bytes.at(2) != 0 && bytes.at(3) == 0)
            || (bytes.at(0) == 0 && bytes.at(1) != 0 && bytes.at(2) == 0 && bytes.at(3) != 0));
    if (!byteOrderMark && !zeroBeside)
        return QString();
    return QStringLiteral("is UTF-16 text; skin files are 8-bit text");
}

} // namespace FileReading
