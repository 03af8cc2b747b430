// SPDX-License-Identifier: MIT
#include "CarriedLines.h"

#include "DocumentMatch.h"
#include "SkinSources.h"
#include "SourceElement.h"
#include "clsKorviInterface.h"

#include <algorithm>

CarriedLines::CarriedLines(const clsKorviInterface &document)
    : mDocument(document)
{
}

QByteArray CarriedLines::of(const clsElement &element, const QByteArray &lineEnd)
{
    if (!DocumentMatch::isFromAFile(mDocument, element))
        return {};
    const SkinSourceFile &source = *mDocument.Sources().file(element.sourceFile());
    std::vector<Span> lines;
    if (!collect(element, source, lines))
        return {};
    std::sort(lines.begin(), lines.end());
    QByteArray text;
    for (const Span &line : lines)
        text += source.bytes().mid(line.first, line.second - line.first);
    // The file's last line may have no line end of its own.
    if (!text.endsWith('\n') && !text.endsWith('\r'))
        text += lineEnd;
    return text;
}

bool CarriedLines::canCarry(const clsElement &element)
{
    if (!DocumentMatch::isFromAFile(mDocument, element))
        return false;
    std::vector<Span> lines;
    return collect(element, *mDocument.Sources().file(element.sourceFile()), lines);
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
