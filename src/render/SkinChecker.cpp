// SPDX-License-Identifier: MIT
#include "SkinChecker.h"

#include <algorithm>
#include <climits>
#include <tuple>
#include <utility>

SkinChecker::SkinChecker(const clsKorviInterface &document, const SkinContext &context,
                         const QVector<SkinReadError> &readingErrors, bool wholeSkin)
    : mContext(context)
    , mReadingErrors(readingErrors)
    , mWholeSkin(wholeSkin)
    , mPlaces(document)
    , mDocumentChecker(document, mPlaces)
    , mValueChecker(document, mPlaces)
    , mPictureChecker(document, mContext, mPlaces)
    , mWalker(document)
{
}

SkinChecker::~SkinChecker() = default;

QVector<Problem> SkinChecker::check(const clsKorviInterface &document, const SkinContext &context,
                                    const QVector<SkinReadError> &readingErrors, bool wholeSkin)
{
    SkinChecker checker(document, context, readingErrors, wholeSkin);
    while (!checker.step(INT_MAX)) {
    }
    return checker.takeProblems();
}

// One walk for all three checkers: a large skin has hundreds of thousands of
// elements.
bool SkinChecker::step(int elements)
{
    switch (mStage) {
    case Stage::Begin:
        mDocumentChecker.begin();
        mPictureChecker.begin();
        mStage = Stage::Walk;
        break;
    case Stage::Walk:
        for (int i = 0; i < elements; ++i) {
            if (!mWalker.next()) {
                mStage = Stage::Finish;
                break;
            }
            const SkinElementWalk::Visit visit = mWalker.visit();
            mDocumentChecker.visit(visit);
            mValueChecker.visit(visit);
            mPictureChecker.visit(visit);
        }
        break;
    case Stage::Finish:
        finish();
        mStage = Stage::Done;
        break;
    case Stage::Done:
        break;
    }
    return done();
}

void SkinChecker::finish()
{
    mProblems = mDocumentChecker.finish(mReadingErrors);
    mProblems += mValueChecker.problems();
    mProblems += mPictureChecker.finish(mWholeSkin);
    sort(mProblems);
}

QVector<Problem> SkinChecker::takeProblems()
{
    return std::exchange(mProblems, {});
}

void SkinChecker::sort(QVector<Problem> &problems)
{
    std::stable_sort(problems.begin(), problems.end(), [](const Problem &a, const Problem &b) {
        return std::tie(a.file, a.line, a.column, a.code) < std::tie(b.file, b.line, b.column, b.code);
    });
}
