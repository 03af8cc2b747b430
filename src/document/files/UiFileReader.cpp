// SPDX-License-Identifier: MIT
#include "UiFileReader.h"

#include "FileFaults.h"
#include "FileReading.h"
#include "SkinReadError.h"
#include "UiFileParser.h"

#include <QFile>
#include <new>

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
    if (const QString problem = FileReading::notAFile(path); !problem.isEmpty())
        throw SkinReadError(path, 0, problem);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw SkinReadError(path, 0, file.errorString());
    if (const QString fault = FileFaults::readFault(path); !fault.isEmpty())
        throw SkinReadError(path, 0, QStringLiteral("the file could not be read whole: %1").arg(fault));
    if (FileFaults::memoryFault(path))
        throw std::bad_alloc();
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
    QByteArray bytes;
    QString why;
    if (!FileReading::readDevice(device, bytes, why))
        throw SkinReadError(fileName, 0, QStringLiteral("the file could not be read whole: %1").arg(why));
    return bytes;
}

void UiFileReader::readBytes(const QByteArray &bytes, const QString &fileName)
{
    // Read as 8-bit text, every other character of UTF-16 text would be a
    // zero: the file is named for what it is rather than read as nonsense.
    if (const QString problem = FileReading::wideTextProblem(bytes); !problem.isEmpty())
        throw SkinReadError(fileName, 0, problem);
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
