// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <memory>

class QIODevice;
class UiFileParser;
class clsKorviInterface;

// Reads a skin file ("User Interface File", .ui) into a document, adding to what
// is already there. One tag per line; the word after the tag is the element's
// name; key=value attributes follow up to the end of the line; plain lines count
// only inside script blocks. Throws SkinReadError at a line it cannot place.
void ReadUiFile(clsKorviInterface &document, const QString &path, bool imported);

class UiFileReader
{
public:
    UiFileReader(clsKorviInterface &document, bool imported);
    ~UiFileReader();
    Q_DISABLE_COPY_MOVE(UiFileReader)

    // Reads the file at `path`; throws SkinReadError when it cannot be opened
    // or read whole.
    void readFile(const QString &path);
    // Reads an open device to its end; `fileName` names it in errors. Throws
    // SkinReadError, reading nothing into the document, when the device
    // reports an error or gives fewer bytes than its size.
    void readDevice(QIODevice &device, const QString &fileName);
    // The whole content of an open device, by the same rules.
    static QByteArray readWhole(QIODevice &device, const QString &fileName);
    // Reads file content already in memory; `fileName` names it in errors.
    void readBytes(const QByteArray &bytes, const QString &fileName);

    // The file's lines: cut at CR LF, a lone CR or a lone LF; a terminator at the
    // very end makes no extra line. Each line is an (offset, length) pair.
    struct LineSpan
    {
        qsizetype offset;
        qsizetype length;
    };
    static QVector<LineSpan> splitLines(const QByteArray &bytes);
    static LineSpan lineAt(const QByteArray &bytes, qsizetype start, qsizetype &next);

private:
    std::unique_ptr<UiFileParser> mParser;
};
