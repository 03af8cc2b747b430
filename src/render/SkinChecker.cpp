// SPDX-License-Identifier: MIT
#include "SkinChecker.h"

#include "DocumentChecker.h"
#include "PictureChecker.h"
#include "ProblemPlaces.h"
#include "SkinElementWalk.h"
#include "ValueChecker.h"

#include <algorithm>
#include <tuple>

namespace SkinChecker {

QVector<Problem> check(const clsKorviInterface &document, const SkinContext &context,
                       const QVector<SkinReadError> &readingErrors, bool wholeSkin)
{
    ProblemPlaces places(document);
    DocumentChecker documentChecker(document, places);
    ValueChecker valueChecker(document, places);
    PictureChecker pictureChecker(document, context, places);
    documentChecker.begin();
    pictureChecker.begin();
    // One walk for all: a large skin has hundreds of thousands of elements.
    SkinElementWalk::forEach(document, [&](const SkinElementWalk::Visit &visit) {
        documentChecker.visit(visit);
        valueChecker.visit(visit);
        pictureChecker.visit(visit);
    });
    QVector<Problem> problems = documentChecker.finish(readingErrors);
    problems += valueChecker.problems();
    problems += pictureChecker.finish(wholeSkin);
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
