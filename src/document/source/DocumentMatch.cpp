// SPDX-License-Identifier: MIT
#include "DocumentMatch.h"

#include "KeyIndex.h"
#include "clsKorviInterface.h"

#include <vector>

namespace DocumentMatch {

namespace {

std::vector<clsElement *> ofFile(const clsKorviInterface &document, const clsElements &elements, int file,
                                 bool receivesNew)
{
    std::vector<clsElement *> own;
    for (clsElement *element : elements) {
        const bool fromAFile = isFromAFile(document, *element);
        if ((fromAFile && element->sourceFile() == file) || (receivesNew && !fromAFile))
            own.push_back(element);
    }
    return own;
}

bool sameElement(const clsElement &a, const clsElement &b)
{
    if (a.ElementType() != b.ElementType() || a.strName() != b.strName())
        return false;
    const clsProperties &pa = a.Properties();
    const clsProperties &pb = b.Properties();
    if (pa.Count() != pb.Count() || a.subElementCount() != b.subElementCount())
        return false;
    for (int i = 0; i < pa.Count(); ++i) {
        if (!KeyIndex::sameKey(clsProperty::idKeyView(pa.keyAt(i)), clsProperty::idKeyView(pb.keyAt(i)))
            || pa.valueAt(i) != pb.valueAt(i))
            return false;
    }
    for (int i = 0; i < a.subElementCount(); ++i) {
        if (!sameElement(*a.SubElements().at(i), *b.SubElements().at(i)))
            return false;
    }
    return true;
}

void takeRecord(clsElement &element, int file, const clsElement &from)
{
    element.setSource(file, from.sourceRecord());
    for (int i = 0; i < element.subElementCount(); ++i)
        takeRecord(*element.SubElements().at(i), file, *from.SubElements().at(i));
}

template<typename Visit>
bool forEachCollection(const clsKorviInterface &document, const clsKorviInterface &alone, int file, bool receivesNew,
                       Visit &&visit)
{
    const std::pair<const clsElements *, const clsElements *> pairs[] = {
        { &document.Headers(), &alone.Headers() },
        { &document.Templates(), &alone.Templates() },
        { &document.Fonts(), &alone.Fonts() },
        { &document.Layers(), &alone.Layers() },
    };
    for (const auto &[mine, theirs] : pairs) {
        const std::vector<clsElement *> own = ofFile(document, *mine, file, receivesNew);
        if (int(own.size()) != theirs->Count())
            return false;
        for (size_t i = 0; i < own.size(); ++i) {
            if (!visit(*own[i], *theirs->at(int(i))))
                return false;
        }
    }
    return true;
}

} // namespace

bool sameAsFile(const clsKorviInterface &document, int file, bool receivesNew, const clsKorviInterface &alone)
{
    return forEachCollection(document, alone, file, receivesNew,
                             [](clsElement &a, const clsElement &b) { return sameElement(a, b); });
}

void takeRecords(clsKorviInterface &document, int file, bool receivesNew, const clsKorviInterface &alone,
                 int newNumber)
{
    // The elements are all found before any of them takes its new number.
    std::vector<std::pair<clsElement *, const clsElement *>> pairs;
    forEachCollection(document, alone, file, receivesNew, [&pairs](clsElement &a, const clsElement &b) {
        pairs.emplace_back(&a, &b);
        return true;
    });
    for (const auto &[mine, theirs] : pairs)
        takeRecord(*mine, newNumber, *theirs);
}

bool isFromAFile(const clsKorviInterface &document, const clsElement &element)
{
    const SkinSourceFile *file = document.Sources().file(element.sourceFile());
    return file && element.sourceRecord() < quint32(file->elementCount());
}

} // namespace DocumentMatch
