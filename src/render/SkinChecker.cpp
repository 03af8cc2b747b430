#include "SkinChecker.h"

#include "DocumentChecker.h"
#include "PictureChecker.h"
#include "ProblemPlaces.h"
#include "ValueChecker.h"

#include <algorithm>
#include <tuple>

namespace SkinChecker {

QVector<Problem> check(const clsKorviInterface &document, const SkinContext &context,
                       const QVector<SkinReadError> &readingErrors, bool wholeSkin)
{
    ProblemPlaces places(document);
    QVector<Problem> problems = DocumentChecker(document, places).check(readingErrors);
    problems += ValueChecker(document, places).check();
    problems += PictureChecker(document, context, places).check(wholeSkin);
    sort(problems);
    return problems;
}

void sort(QVector<Problem> &problems)
{
    std::stable_sort(problems.begin(), problems.end(), [](const Problem &a, const Problem &b) {
        return std::tie(a.file, a.line, a.column, a.code) < std::tie(b.file, b.line, b.column, b.code);
    });
}

} // namespace SkinChecker
