// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"
#include "SkinReadError.h"

#include <QVector>

class clsKorviInterface;
struct SkinContext;

// Checks a whole skin as the editor opened it: the document (every file read,
// with its bytes), the values the pictures are looked up by, and the reading
// errors the open met. Runs the checks of the document (DocumentChecker), of
// the values (ValueChecker) and of the pictures (PictureChecker), and gives
// the problems in order of file, line and column.
//
//     clsKorviInterface document;
//     const SkinOpenPlan plan = SkinOpenPlan::forFile(path);
//     const QVector<SkinReadError> errors = plan.readInto(document);
//     SkinContext context { plan.uiFilePath, skinDirectory, plan.skinFormat };
//     const QVector<Problem> problems = SkinChecker::check(document, context, errors, plan.wholeFolder);
namespace SkinChecker {

QVector<Problem> check(const clsKorviInterface &document, const SkinContext &context,
                       const QVector<SkinReadError> &readingErrors, bool wholeSkin);

// By file, line, column, then code.
void sort(QVector<Problem> &problems);

} // namespace SkinChecker
