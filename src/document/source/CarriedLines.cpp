// SPDX-License-Identifier: MIT
#include "CarriedLines.h"

#include "DocumentMatch.h"
#include "ElementText.h"
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
    if (!SourceScan::endsWithLineEnd(text))
        text += lineEnd;
    return text;
}

} // namespace

CarriedLines::CarriedLines(const clsKorviInterface &document)
    : mDocument(document)
{
}

QByteArray CarriedLines::textOf(const clsElement &element, int file, const QByteArray &lineEnd,
                                const QByteArray &indent, QString &problem)
{
    const ElementText anew(lineEnd, indent, mDocument.codec());
    // Lines of another file may end differently: what comes from there is written anew.
    const bool fromHere = element.sourceFile() == file && DocumentMatch::isFromAFile(mDocument, element);
    if (!fromHere && element.subElementCount() == 0)
        return anew.of(element, problem);
    if (fromHere) {
        const SkinSourceFile &source = *mDocument.Sources().file(file);
        std::vector<Span> lines;
        if (collect(element, source, lines)) {
            std::sort(lines.begin(), lines.end());
            QByteArray text;
            for (const Span &line : lines)
                text += endedLines(source.bytes(), line.first, line.second, lineEnd);
            return text;
        }
        if (element.subElementCount() == 0)
            return anew.of(element, problem);
    }
    if (!ElementText::opensBlock(element.ElementType()))
        return anew.of(element, problem);
    // A block: its own lines as read or anew, around its children.
    QByteArray opening;
    QByteArray closing;
    QByteArray childIndent = indent + '\t';
    if (fromHere) {
        const SkinSourceFile &source = *mDocument.Sources().file(file);
        const SourceElement read = SourceElement::read(source, element.sourceRecord());
        if (ownTagAsRead(element, read)) {
            opening = endedLines(source.bytes(), read.tag.begin, read.tag.next, lineEnd);
            childIndent = SourceScan::indentationAt(source.bytes(), read.tag.begin) + '\t';
            if (read.closingBegin >= 0)
                closing = endedLines(source.bytes(), read.closingBegin, read.closingNext, lineEnd);
        }
    }
    if (opening.isEmpty())
        opening = anew.openingOf(element, problem);
    if (closing.isEmpty())
        closing = ElementText(lineEnd, childIndent.chopped(1), mDocument.codec()).closingOf(element);
    QByteArray text = opening;
    for (const clsElement *child : element.SubElements()) {
        if (problem.isEmpty())
            text += textOf(*child, file, lineEnd, childIndent, problem);
    }
    return problem.isEmpty() ? text + closing : QByteArray();
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
