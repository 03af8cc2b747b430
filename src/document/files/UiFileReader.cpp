// SPDX-License-Identifier: MIT
#include "UiFileReader.h"

#include "SkinReadError.h"
#include "UiFileParser.h"

#include <QFile>

void ReadUiFile(clsKorviInterface &document, const QString &path, bool imported)
{
    UiFileReader(document, imported).readFile(path);
}

UiFileReader::UiFileReader(clsKorviInterface &document, bool imported)
    : mParser(std::make_unique<UiFileParser>(document, imported))
{
}

UiFileReader::~UiFileReader() = default;

void UiFileReader::readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw SkinReadError(path, 0, file.errorString());
    readDevice(file, path);
}

void UiFileReader::readDevice(QIODevice &device, const QString &fileName)
{
    readBytes(readWhole(device, fileName), fileName);
}

// A read that fails half-way must not pass for the end of the file: a skin
// read in part would be shown, and saved, as if it were whole.
QByteArray UiFileReader::readWhole(QIODevice &device, const QString &fileName)
{
    const qint64 expected = device.isSequential() ? -1 : device.size();
    const auto failed = [&](const QString &why) {
        return SkinReadError(fileName, 0, QStringLiteral("the file could not be read whole: %1").arg(why));
    };
    QByteArray bytes;
    // The file's own size is read in one go, into a buffer of just that size;
    // a file that reports none (as some system files do), or that grew, is
    // read on to its end a piece at a time.
    if (expected > 0) {
        // Made at its size: growing it would give it the room of a growing
        // array, a quarter more than a large file needs, kept for as long as
        // the document keeps the bytes.
        bytes = QByteArray(qsizetype(expected), Qt::Uninitialized);
        const qint64 got = device.read(bytes.data(), expected);
        if (got < 0)
            throw failed(device.errorString());
        bytes.resize(qsizetype(got));
    }
    char piece[1 << 16];
    for (;;) {
        const qint64 got = device.read(piece, qint64(sizeof piece));
        if (got < 0)
            throw failed(device.errorString());
        if (got == 0)
            break;
        bytes.append(piece, qsizetype(got));
    }
    if (expected > 0 && bytes.size() != expected)
        throw failed(QStringLiteral("%1 of %2 bytes read").arg(bytes.size()).arg(expected));
    return bytes;
}

void UiFileReader::readBytes(const QByteArray &bytes, const QString &fileName)
{
    mParser->readBytes(bytes, fileName);
}

UiFileReader::LineSpan UiFileReader::lineAt(const QByteArray &bytes, qsizetype start, qsizetype &next)
{
    return UiFileParser::lineAt(bytes, start, next);
}

QVector<UiFileReader::LineSpan> UiFileReader::splitLines(const QByteArray &bytes)
{
    QVector<LineSpan> lines;
    for (qsizetype start = 0; start < bytes.size();)
        lines.append(lineAt(bytes, start, start));
    return lines;
}
