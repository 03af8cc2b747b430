#include "ProblemPlaces.h"

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

void ProblemPlaces::placeAtElement(Problem &problem, const clsElement &element, QByteArrayView propertyKey)
{
    const SkinSourceFile *file = mDocument.Sources().file(element.sourceFile());
    if (!file)
        return;
    const SourceElement read = SourceElement::read(*file, element.sourceRecord());
    qsizetype offset = file->bytes().indexOf('<', read.tag.begin);
    if (offset < 0 || offset > read.tag.end)
        offset = read.tag.begin;
    if (!propertyKey.isEmpty()) {
        for (const SourceElement::Property &property : read.properties) {
            if (property.key != propertyKey)
                continue;
            offset = property.isScriptLine ? property.line.textBegin : property.attribute.keyBegin;
            break;
        }
    }
    placeAt(problem, element.sourceFile(), offset);
}

QString ProblemPlaces::whereIs(const clsElement &element)
{
    Problem place;
    placeAtElement(place, element);
    if (place.file.isEmpty())
        return QStringLiteral("an element added since the skin was read");
    return QStringLiteral("%1:%2").arg(place.file).arg(place.line);
}
