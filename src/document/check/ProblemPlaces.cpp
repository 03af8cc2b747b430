// SPDX-License-Identifier: MIT
#include "ProblemPlaces.h"

#include "KeyIndex.h"
#include "PropertyPack.h"
#include "SourceElement.h"
#include "SourceScan.h"
#include "UiCharRuns.h"
#include "UiFileReader.h"
#include "UiLineScanner.h"
#include "clsKorviInterface.h"

#include <cstring>

ProblemPlaces::ProblemPlaces(const clsKorviInterface &document)
    : mDocument(document)
    , mPack(std::make_unique<PropertyPack>())
{
}

ProblemPlaces::~ProblemPlaces() = default;

SourceLines &ProblemPlaces::uncountedLinesOf(int fileNumber)
{
    std::unique_ptr<SourceLines> &lines = mLines[fileNumber];
    if (!lines)
        lines = std::make_unique<SourceLines>(SourceLines::uncounted(mDocument.Sources().file(fileNumber)->bytes()));
    return *lines;
}

const SourceLines &ProblemPlaces::linesOf(int fileNumber)
{
    SourceLines &lines = uncountedLinesOf(fileNumber);
    if (!lines.counted()) {
        const QByteArray &bytes = mDocument.Sources().file(fileNumber)->bytes();
        lines.countMore(bytes, bytes.size());
    }
    return lines;
}

bool ProblemPlaces::countLines(qsizetype budget)
{
    for (; mCountingFile <= mDocument.Sources().count(); ++mCountingFile) {
        const SkinSourceFile *file = mDocument.Sources().file(mCountingFile);
        if (!file || uncountedLinesOf(mCountingFile).countMore(file->bytes(), budget))
            continue;
        return false;
    }
    return true;
}

qsizetype ProblemPlaces::lineStart(int fileNumber, qint64 line)
{
    return linesOf(fileNumber).lineStart(line);
}

void ProblemPlaces::placeAt(Problem &problem, int fileNumber, qsizetype offset)
{
    const SkinSourceFile *file = mDocument.Sources().file(fileNumber);
    if (!file)
        return;
    problem.file = file->path();
    const SourceLines::Position position = linesOf(fileNumber).at(offset);
    problem.line = position.line;
    problem.column = position.column;
}

namespace {

// Which of the properties of one plain key a numbered key names: "x" the
// first, "x[0]" the second, "x[1]" the third.
int occurrenceOf(QByteArrayView key, QByteArrayView &plain)
{
    plain = clsProperty::idKeyView(key);
    if (plain.size() == key.size())
        return 0;
    bool ok = false;
    const int n = key.sliced(plain.size() + 1).chopped(1).toInt(&ok);
    return ok ? n + 1 : -1;
}

} // namespace

// Most properties stand on the element's tag line, in the order the element
// holds them: that line alone is read again. Script lines and attributes on
// later lines need the whole element read again.
void ProblemPlaces::placeAtElement(Problem &problem, const clsElement &element, QByteArrayView propertyKey)
{
    const SkinSourceFile *file = mDocument.Sources().file(element.sourceFile());
    if (!file)
        return;
    // The tag is the line's first token.
    const qsizetype tagLine = file->element(element.sourceRecord()).tagLine;
    qsizetype offset = file->bytes().indexOf('<', tagLine);
    if (offset < 0)
        offset = tagLine;
    if (!propertyKey.isEmpty()) {
        if (mLastElement != &element) {
            readTagKeys(file->bytes(), tagLine);
            mLastElement = &element;
        }
        offset = propertyOffset(*file, element, propertyKey, offset);
    }
    placeAt(problem, element.sourceFile(), offset);
}

namespace {

// The lines after a tag line, for a quoted value that runs on: such a line is
// read in full by SourceScan instead.
class NoFollowingLines : public UiLineScanner::LineSource
{
public:
    bool takeNextLine(QByteArray &) override
    {
        asked = true;
        return false;
    }
    bool asked = false;
};

} // namespace

// The keys of the tag line at `lineBegin`, read as the reader reads a tag
// (UiFileReader::readTag): the tag word, one byte passed over, the name word
// unless the tag is a var tag, then the attributes.
void ProblemPlaces::readTagKeys(const QByteArray &bytes, qsizetype lineBegin)
{
    mLastKeys.clear();
    if (lineBegin >= bytes.size())
        return;
    qsizetype next = 0;
    const UiFileReader::LineSpan span = UiFileReader::lineAt(bytes, lineBegin, next);
    mLine.reserve(span.length + 1 + UiCharRuns::kSlack);
    mLine.resize(span.length + 1);
    memcpy(mLine.data(), bytes.constData() + span.offset, size_t(span.length));
    mLine[span.length] = '\r';
    NoFollowingLines more;
    UiLineScanner scanner(mLine.constData(), mLine.size(), mGrown, &more);
    scanner.position = scanner.NextTokenStart(1);
    if (scanner.position == 0)
        scanner.position = 1;
    if (scanner.atEnd() || scanner.current() != '<')
        return;
    scanner.position += 1;
    const bool isVar = KeyIndex::sameKey(scanner.ReadName(), "var");
    scanner.position += 1;
    if (!isVar)
        scanner.ReadName();
    if (scanner.position <= 0)
        return;
    if (isVar)
        scanner.position -= 1;
    scanner.position += 1;
    mPack->clear();
    scanner.ReadAttributes(*mPack, [] {}, [&](const UiLineScanner::Attribute &read, qint64) {
        if (read.keep)
            mLastKeys.push_back({ span.offset + read.keyAt, read.keyLength });
    });
    if (!more.asked)
        return;
    // A quoted value ran on over the next lines: the line is read whole.
    mLastKeys.clear();
    for (const SourceScan::Attribute &attribute : SourceScan::scanLine(bytes, lineBegin).attributes)
        mLastKeys.push_back({ attribute.keyBegin, attribute.keyEnd - attribute.keyBegin });
}

qsizetype ProblemPlaces::propertyOffset(const SkinSourceFile &file, const clsElement &element, QByteArrayView key,
                                        qsizetype fallback)
{
    QByteArrayView plain;
    int wanted = occurrenceOf(key, plain);
    const char *bytes = file.bytes().constData();
    for (const KeyPlace &place : mLastKeys) {
        if (KeyIndex::sameKey(QByteArrayView(bytes + place.begin, place.length), plain) && wanted-- == 0)
            return place.begin;
    }
    const SourceElement read = SourceElement::read(file, element.sourceRecord());
    for (const SourceElement::Property &property : read.properties) {
        if (property.key == key)
            return property.isScriptLine ? property.line.textBegin : property.attribute.keyBegin;
    }
    return fallback;
}

QString ProblemPlaces::whereIs(const clsElement &element)
{
    Problem place;
    placeAtElement(place, element);
    if (place.file.isEmpty())
        return QStringLiteral("an element added since the skin was read");
    return QStringLiteral("%1:%2").arg(place.file).arg(place.line);
}
