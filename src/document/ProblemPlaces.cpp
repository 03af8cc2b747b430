// SPDX-License-Identifier: MIT
#include "ProblemPlaces.h"

#include "KeyIndex.h"
#include "SourceElement.h"
#include "clsKorviInterface.h"

ProblemPlaces::ProblemPlaces(const clsKorviInterface &document)
    : mDocument(document)
{
}

ProblemPlaces::~ProblemPlaces() = default;

const SourceLines &ProblemPlaces::linesOf(int fileNumber)
{
    std::unique_ptr<SourceLines> &lines = mLines[fileNumber];
    if (!lines)
        lines = std::make_unique<SourceLines>(mDocument.Sources().file(fileNumber)->bytes());
    return *lines;
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
        // Problems of one element mostly come one after the other.
        if (mLastElement != &element) {
            mLastTag = SourceScan::scanLine(file->bytes(), tagLine);
            mLastElement = &element;
        }
        offset = propertyOffset(*file, element, mLastTag, propertyKey, offset);
    }
    placeAt(problem, element.sourceFile(), offset);
}

qsizetype ProblemPlaces::propertyOffset(const SkinSourceFile &file, const clsElement &element,
                                        const SourceScan::Line &tag, QByteArrayView key, qsizetype fallback)
{
    QByteArrayView plain;
    int wanted = occurrenceOf(key, plain);
    for (const SourceScan::Attribute &attribute : tag.attributes) {
        if (KeyIndex::sameKey(attribute.key, plain) && wanted-- == 0)
            return attribute.keyBegin;
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
