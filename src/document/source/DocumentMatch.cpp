// SPDX-License-Identifier: MIT
#include "DocumentMatch.h"

#include "KeyIndex.h"
#include "SkinCodec.h"
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

template<typename Own, typename Visit>
bool forEachCollection(const clsKorviInterface &document, const clsKorviInterface &alone, Own &&own, Visit &&visit)
{
    const std::pair<const clsElements *, const clsElements *> pairs[] = {
        { &document.Headers(), &alone.Headers() },
        { &document.Templates(), &alone.Templates() },
        { &document.Fonts(), &alone.Fonts() },
        { &document.Layers(), &alone.Layers() },
    };
    for (const auto &[mine, theirs] : pairs) {
        const std::vector<clsElement *> elements = own(*mine);
        if (int(elements.size()) != theirs->Count())
            return false;
        for (size_t i = 0; i < elements.size(); ++i) {
            if (!visit(*elements[i], *theirs->at(int(i))))
                return false;
        }
    }
    return true;
}

template<typename Visit>
bool forEachCollection(const clsKorviInterface &document, const clsKorviInterface &alone, int file, bool receivesNew,
                       Visit &&visit)
{
    return forEachCollection(
        document, alone, [&](const clsElements &elements) { return ofFile(document, elements, file, receivesNew); },
        std::forward<Visit>(visit));
}

// What the whole-document writer writes: every element not imported.
std::vector<clsElement *> written(const clsElements &elements)
{
    std::vector<clsElement *> own;
    for (clsElement *element : elements) {
        if (!element->IsImported)
            own.push_back(element);
    }
    return own;
}

QString described(const clsElement &element)
{
    return QStringLiteral("%1 %2").arg(SkinCodec::wordText(element.ElementType()), SkinCodec::wordText(element.strName()));
}

// Values are quoted as the skin's code page shows them.
QString differenceIn(const SkinCodec &codec, const clsElement &a, const clsElement &b, const QString &path)
{
    const QString here = path.isEmpty() ? described(a) : path + QStringLiteral(" > ") + described(a);
    if (a.ElementType() != b.ElementType() || a.strName() != b.strName())
        return QStringLiteral("%1 would read back as %2").arg(here, described(b));
    const clsProperties &pa = a.Properties();
    const clsProperties &pb = b.Properties();
    for (int i = 0; i < qMin(pa.Count(), pb.Count()); ++i) {
        if (!KeyIndex::sameKey(clsProperty::idKeyView(pa.keyAt(i)), clsProperty::idKeyView(pb.keyAt(i)))
            || pa.valueAt(i) != pb.valueAt(i)) {
            return QStringLiteral("%1: %2=%3 would read back as %4=%5")
                .arg(here, SkinCodec::wordText(clsProperty::idKeyView(pa.keyAt(i))), codec.toText(pa.valueAt(i)),
                     SkinCodec::wordText(clsProperty::idKeyView(pb.keyAt(i))), codec.toText(pb.valueAt(i)));
        }
    }
    if (pa.Count() != pb.Count())
        return QStringLiteral("%1: its %2 properties would read back as %3").arg(here).arg(pa.Count()).arg(pb.Count());
    for (int i = 0; i < qMin(a.subElementCount(), b.subElementCount()); ++i) {
        const QString inside = differenceIn(codec, *a.SubElements().at(i), *b.SubElements().at(i), here);
        if (!inside.isEmpty())
            return inside;
    }
    if (a.subElementCount() != b.subElementCount())
        return QStringLiteral("%1: its %2 elements would read back as %3").arg(here).arg(a.subElementCount()).arg(b.subElementCount());
    return {};
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

QString firstDifference(const clsKorviInterface &document, int file, bool receivesNew, const clsKorviInterface &alone)
{
    const std::pair<const clsElements *, const clsElements *> pairs[] = {
        { &document.Headers(), &alone.Headers() },
        { &document.Templates(), &alone.Templates() },
        { &document.Fonts(), &alone.Fonts() },
        { &document.Layers(), &alone.Layers() },
    };
    for (const auto &[mine, theirs] : pairs) {
        const std::vector<clsElement *> own = ofFile(document, *mine, file, receivesNew);
        for (int i = 0; i < qMin(int(own.size()), theirs->Count()); ++i) {
            const QString difference = differenceIn(document.codec(), *own[size_t(i)], *theirs->at(i), {});
            if (!difference.isEmpty())
                return difference;
        }
        if (int(own.size()) > theirs->Count())
            return QStringLiteral("%1 would not read back").arg(described(*own[size_t(theirs->Count())]));
        if (int(own.size()) < theirs->Count())
            return QStringLiteral("%1 would read back as one more element").arg(described(*theirs->at(int(own.size()))));
    }
    return {};
}

bool sameAsWholeDocument(const clsKorviInterface &document, const clsKorviInterface &alone)
{
    return forEachCollection(document, alone, written, [](clsElement &a, const clsElement &b) { return sameElement(a, b); });
}

void takeWholeDocumentRecords(clsKorviInterface &document, const clsKorviInterface &alone, int newNumber)
{
    std::vector<std::pair<clsElement *, const clsElement *>> pairs;
    forEachCollection(document, alone, written, [&pairs](clsElement &a, const clsElement &b) {
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
