// SPDX-License-Identifier: MIT
#include "CarriedLines.h"

#include "DocumentMatch.h"
#include "SkinSources.h"
#include "SourceElement.h"
#include "SourceScan.h"
#include "clsKorviInterface.h"

#include <algorithm>

namespace {

// The bytes of a line, ended: the file's last line may have no line end.
QByteArray endedLines(const QByteArray &bytes, qsizetype begin, qsizetype next, const QByteArray &lineEnd)
{
    QByteArray text = bytes.mid(begin, next - begin);
    if (!text.endsWith('\n') && !text.endsWith('\r'))
        text += lineEnd;
    return text;
}

} // namespace

CarriedLines::CarriedLines(const clsKorviInterface &document)
    : mDocument(document)
{
}

QByteArray CarriedLines::textOf(const clsElement &element, int file, const QByteArray &lineEnd,
                                const QByteArray &indent, const WriteAnew &writeAnew)
{
    // Lines of another file may end differently: what comes from there is written anew.
    if (element.sourceFile() != file || !DocumentMatch::isFromAFile(mDocument, element))
        return writeAnew(element, indent);
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    const QByteArray &bytes = source.bytes();
    std::vector<Span> lines;
    if (collect(element, source, lines)) {
        std::sort(lines.begin(), lines.end());
        QByteArray text;
        for (const Span &line : lines)
            text += endedLines(bytes, line.first, line.second, lineEnd);
        return text;
    }
    const SourceElement read = SourceElement::read(source, element.sourceRecord());
    if (!ownTagAsRead(element, read) || element.subElementCount() == 0 || read.closingBegin < 0)
        return writeAnew(element, indent);
    QByteArray text = endedLines(bytes, read.tag.begin, read.tag.next, lineEnd);
    const QByteArray childIndent = SourceScan::indentationAt(bytes, read.tag.begin) + '\t';
    for (const clsElement *child : element.SubElements())
        text += textOf(*child, file, lineEnd, childIndent, writeAnew);
    return text + endedLines(bytes, read.closingBegin, read.closingNext, lineEnd);
}

bool CarriedLines::canCarry(const clsElement &element)
{
    if (!DocumentMatch::isFromAFile(mDocument, element))
        return false;
    std::vector<Span> lines;
    return collect(element, *mDocument.Sources().file(element.sourceFile()), lines);
}

// Its type, name and properties as read, every property from its tag line.
bool CarriedLines::ownTagAsRead(const clsElement &element, const SourceElement &read)
{
    if (element.changedSinceSource())
        return false;
    return std::all_of(read.properties.begin(), read.properties.end(), [&](const SourceElement::Property &property) {
        return !property.isScriptLine && property.attribute.keyBegin >= read.tag.begin
            && property.attribute.keyBegin < read.tag.next;
    });
}

// The lines are exactly those the removal of the element's old place takes
// away (see ChangeFinder::removeUnclaimed): tag lines, script lines and
// closing lines. A property read from any other line would stay behind.
bool CarriedLines::collect(const clsElement &element, const SkinSourceFile &source, std::vector<Span> &lines)
{
    if (element.changedSinceSource())
        return false;
    const SourceElement read = SourceElement::read(source, element.sourceRecord());
    lines.emplace_back(read.tag.begin, read.tag.next);
    for (const SourceElement::Property &property : read.properties) {
        if (property.isScriptLine)
            lines.emplace_back(property.line.begin, property.line.next);
        else if (property.attribute.keyBegin < read.tag.begin || property.attribute.keyBegin >= read.tag.next)
            return false;
    }
    if (read.closingBegin >= 0)
        lines.emplace_back(read.closingBegin, read.closingNext);
    const int file = element.sourceFile();
    const int children = element.subElementCount();
    if (children != childRecordCount(file, element.sourceRecord()))
        return false;
    quint32 previous = element.sourceRecord();
    for (int i = 0; i < children; ++i) {
        const clsElement &child = *element.SubElements().at(i);
        // The children read, in the order read, each still in this block.
        if (child.sourceFile() != file || !DocumentMatch::isFromAFile(mDocument, child)
            || child.sourceRecord() <= previous || source.element(child.sourceRecord()).parent != element.sourceRecord())
            return false;
        previous = child.sourceRecord();
        if (!collect(child, source, lines))
            return false;
    }
    return true;
}

int CarriedLines::childRecordCount(int file, quint32 record)
{
    if (mChildCounts.size() <= size_t(file))
        mChildCounts.resize(size_t(file) + 1);
    std::vector<int> &counts = mChildCounts[size_t(file)];
    const SkinSourceFile &source = *mDocument.Sources().file(file);
    if (counts.empty()) {
        counts.assign(size_t(source.elementCount()), 0);
        for (quint32 r = 0; r < quint32(source.elementCount()); ++r) {
            const quint32 parent = source.element(r).parent;
            if (parent != ElementSource::kNone && parent < counts.size())
                ++counts[parent];
        }
    }
    return record < counts.size() ? counts[record] : 0;
}
