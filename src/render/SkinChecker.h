// SPDX-License-Identifier: MIT
#pragma once

#include "DocumentChecker.h"
#include "PictureChecker.h"
#include "Problem.h"
#include "ProblemPlaces.h"
#include "SkinContext.h"
#include "SkinElementWalker.h"
#include "SkinReadError.h"
#include "ValueChecker.h"

#include <QVector>
#include <climits>

class clsKorviInterface;

// Checks a whole skin as the editor opened it: the document (every file read,
// with its bytes), the values the pictures are looked up by, and the reading
// errors the open met. Runs the checks of the document (DocumentChecker), of
// the values (ValueChecker) and of the pictures (PictureChecker) in one walk of
// the elements, and gives the problems in order of file, line and column.
//
//     clsKorviInterface document;
//     const SkinOpenPlan plan = SkinOpenPlan::forFile(path);
//     const QVector<SkinReadError> errors = plan.readInto(document);
//     SkinContext context { plan.uiFilePath, skinDirectory, plan.skinFormat };
//     const QVector<Problem> problems = SkinChecker::check(document, context, errors, plan.wholeFolder);
//
// A check can also be made in steps, so that a large skin is checked between
// other work: construct a checker, call step() until it says the check is
// done, then take the problems. The document must not change meanwhile; a
// checker whose document changed is dropped and a new one started.
class SkinChecker
{
public:
    // `wholeSkin`: the document holds every .ui file of the skin (All).
    SkinChecker(const clsKorviInterface &document, const SkinContext &context,
                const QVector<SkinReadError> &readingErrors, bool wholeSkin);
    ~SkinChecker();

    // Checks up to `elements` more elements (at least one step of the work);
    // true once the whole skin is checked.
    bool step(int elements);
    // Goes on for about `milliseconds` (at least one step), and at most
    // `elements` elements; true once the whole skin is checked.
    bool runFor(int milliseconds, int elements = INT_MAX);
    bool done() const { return mStage == Stage::Done; }
    // The problems, sorted; only once done.
    QVector<Problem> takeProblems();

    static QVector<Problem> check(const clsKorviInterface &document, const SkinContext &context,
                                  const QVector<SkinReadError> &readingErrors, bool wholeSkin);

    // By file, line, column, then code.
    static void sort(QVector<Problem> &problems);

private:
    // Lines counted, files' tag lines read, elements walked, problems
    // gathered, then sorted.
    enum class Stage { CountLines, ScanFiles, Walk, Finish, Sort, Done };

    void finish();

    // The checker's own copies: the editor's may change while a check goes on.
    const SkinContext mContext;
    const QVector<SkinReadError> mReadingErrors;
    const bool mWholeSkin;
    ProblemPlaces mPlaces;
    DocumentChecker mDocumentChecker;
    ValueChecker mValueChecker;
    PictureChecker mPictureChecker;
    SkinElementWalker mWalker;
    Stage mStage = Stage::CountLines;
    QVector<Problem> mProblems;
};
