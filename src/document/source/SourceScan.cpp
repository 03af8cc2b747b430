// SPDX-License-Identifier: MIT
#include "SourceScan.h"

#include "AsciiCase.h"
#include "UiFileReader.h"
#include "UiLineScanner.h"

#include <cstring>

namespace SourceScan {

namespace {

// A line of the file as the reader sees it: its bytes and a CR, and room for
// the scanner's block reads.
QByteArray lineCopy(const QByteArray &bytes, qsizetype begin, qsizetype length)
{
    QByteArray line;
    line.reserve(length + 1 + UiCharRuns::kSlack);
    line.append(bytes.constData() + begin, length);
    line.append('\r');
    return line;
}

// Hands the scanner the lines after the first, as the reader does, and
// remembers where each one went in the scanner's line, to turn offsets there
// back into offsets in the file.
class FollowingLines : public UiLineScanner::LineSource
{
public:
    struct Piece
    {
        qsizetype inLine;
        qsizetype inFile;
        qsizetype length;
        qsizetype next;
    };

    FollowingLines(const QByteArray &bytes, const Piece &first) : mBytes(bytes) { mPieces.push_back(first); }

    bool takeNextLine(QByteArray &line) override
    {
        if (mPastLastLine)
            return false;
        const Piece &last = mPieces.back();
        const qsizetype inLine = last.inLine + last.length + 1;
        if (last.next >= mBytes.size()) {
            // The empty line after the last one.
            mPastLastLine = true;
            line = QByteArray();
            mPieces.push_back({ inLine, mBytes.size(), 0, mBytes.size() });
            return true;
        }
        qsizetype next = 0;
        const UiFileReader::LineSpan span = UiFileReader::lineAt(mBytes, last.next, next);
        line = lineCopy(mBytes, span.offset, span.length);
        mPieces.push_back({ inLine, span.offset, span.length, next });
        return true;
    }

    // The file offset of an offset in the scanner's line; the CR after a
    // piece stands for that line's end.
    qsizetype inFile(qsizetype inLine) const
    {
        for (auto it = mPieces.rbegin(); it != mPieces.rend(); ++it) {
            if (inLine >= it->inLine)
                return it->inFile + qMin(inLine - it->inLine, it->length);
        }
        return mPieces.front().inFile;
    }
    const Piece &last() const { return mPieces.back(); }
    bool pastLastLine() const { return mPastLastLine; }

private:
    const QByteArray &mBytes;
    std::vector<Piece> mPieces;
    bool mPastLastLine = false;
};

void scanPlainLine(const QByteArray &bytes, Line &line)
{
    const char *d = bytes.constData();
    qsizetype first = line.begin;
    qsizetype last = line.end;
    while (first < last && (d[first] == ' ' || d[first] == '\t'))
        ++first;
    while (last > first && (d[last - 1] == ' ' || d[last - 1] == '\t'))
        --last;
    line.textBegin = first;
    line.textEnd = last;
    // The reader drops every tab, then the blanks around what is left.
    QByteArray text;
    text.reserve(line.end - line.begin);
    for (qsizetype i = line.begin; i < line.end; ++i) {
        if (d[i] != '\t')
            text += d[i];
    }
    qsizetype a = 0;
    qsizetype b = text.size();
    while (a < b && text.at(a) == ' ')
        ++a;
    while (b > a && text.at(b - 1) == ' ')
        --b;
    line.scriptText = text.mid(a, b - a);
}

} // namespace

qsizetype lineStartOf(const QByteArray &bytes, qsizetype offset)
{
    while (offset > 0 && bytes.at(offset - 1) != '\n' && bytes.at(offset - 1) != '\r')
        --offset;
    return offset;
}

qsizetype nextLineStart(const QByteArray &bytes, qsizetype offset)
{
    if (offset >= bytes.size())
        return bytes.size();
    qsizetype next = 0;
    UiFileReader::lineAt(bytes, lineStartOf(bytes, offset), next);
    return qMin(next, bytes.size());
}

QByteArray dominantLineEnd(const QByteArray &bytes)
{
    qsizetype crLf = 0;
    qsizetype lf = 0;
    qsizetype cr = 0;
    const char *d = bytes.constData();
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (d[i] == '\n') {
            ++lf;
        } else if (d[i] == '\r') {
            if (i + 1 < n && d[i + 1] == '\n') {
                ++crLf;
                ++i;
            } else {
                ++cr;
            }
        }
    }
    if (lf > crLf && lf >= cr)
        return QByteArrayLiteral("\n");
    if (cr > crLf && cr > lf)
        return QByteArrayLiteral("\r");
    return QByteArrayLiteral("\r\n");
}

QByteArray indentationAt(const QByteArray &bytes, qsizetype lineBegin)
{
    qsizetype end = lineBegin;
    while (end < bytes.size() && (bytes.at(end) == ' ' || bytes.at(end) == '\t'))
        ++end;
    return bytes.mid(lineBegin, end - lineBegin);
}

bool endsWithLineEnd(const QByteArray &bytes)
{
    return bytes.endsWith('\n') || bytes.endsWith('\r');
}

Line scanLine(const QByteArray &bytes, qsizetype begin)
{
    Line line;
    line.begin = begin;
    FollowingLines::Piece first { 0, begin, 0, bytes.size() };
    if (begin < bytes.size()) {
        const UiFileReader::LineSpan span = UiFileReader::lineAt(bytes, begin, first.next);
        first.length = span.length;
    }
    if (begin >= bytes.size()) {
        // The empty line after the last one.
        line.begin = line.end = line.next = bytes.size();
        line.textBegin = line.textEnd = bytes.size();
        return line;
    }
    FollowingLines more(bytes, first);
    const QByteArray copy = lineCopy(bytes, begin, first.length);
    QByteArray grown;
    UiLineScanner scanner(copy.constData(), copy.size(), grown, &more);
    line.end = begin + first.length;
    line.next = first.next;

    scanner.position = scanner.NextTokenStart(1);
    if (scanner.position == 0)
        scanner.position = 1;
    line.isTag = !scanner.atEnd() && scanner.current() == '<';
    if (!line.isTag) {
        scanPlainLine(bytes, line);
        return line;
    }
    // As the reader reads a tag: "<", the tag word, one character passed over,
    // the name word unless the tag is "var", then the attributes.
    scanner.position += 1;
    const QByteArrayView word = scanner.ReadName();
    line.wordBegin = begin + (word.data() ? word.data() - copy.constData() : 0);
    line.wordEnd = line.wordBegin + word.size();
    scanner.position += 1;
    const bool isVar = AsciiCase::lowered(word.toByteArray()) == "var";
    line.nameBegin = line.nameEnd = line.wordEnd;
    if (!isVar) {
        QByteArrayView name = scanner.ReadName();
        if (name.endsWith('/'))
            name.chop(1);
        if (!name.isEmpty()) {
            line.nameBegin = begin + (name.data() - copy.constData());
            line.nameEnd = line.nameBegin + name.size();
        }
    }
    qsizetype stopInLine = copy.size() - 1;
    if (scanner.position > 0) {
        if (isVar)
            scanner.position -= 1;
        scanner.position += 1;
        PropertyPack pack;
        scanner.ReadAttributes(pack, [] {}, [&](const UiLineScanner::Attribute &read, qint64 after) {
            if (!read.keep)
                return;
            Attribute a;
            const char *d = scanner.data();
            a.key = AsciiCase::lowered(QByteArray(d + read.keyAt, read.keyLength));
            a.keyBegin = more.inFile(read.keyAt);
            a.keyEnd = more.inFile(read.keyAt + read.keyLength);
            a.hasValue = read.hasValue;
            if (read.hasValue) {
                a.value = QByteArray(d + read.valueAt, after - read.valueAt);
                a.valueBegin = more.inFile(read.valueAt);
                a.valueEnd = more.inFile(after);
            } else {
                a.value = QByteArrayLiteral("<NOV>");
                a.valueBegin = a.valueEnd = a.keyEnd;
            }
            line.attributes.push_back(std::move(a));
        });
        stopInLine = scanner.position > 0 ? scanner.position - 1 : scanner.size() - 1;
    }
    line.stop = more.inFile(stopInLine);
    const FollowingLines::Piece &last = more.last();
    line.end = last.inFile + last.length;
    line.next = last.next;
    return line;
}

} // namespace SourceScan
