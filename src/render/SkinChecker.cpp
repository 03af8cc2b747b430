// SPDX-License-Identifier: MIT
#include "SkinChecker.h"

#include <QElapsedTimer>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

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
    // A file's bytes are read at some 200 bytes per element of it.
    const qsizetype bytes = qsizetype(elements) * 200;
    switch (mStage) {
    case Stage::CountLines:
        if (mPlaces.countLines(bytes)) {
            mDocumentChecker.begin();
            mPictureChecker.begin();
            mStage = Stage::ScanFiles;
        }
        break;
    case Stage::ScanFiles:
        if (mDocumentChecker.scanFiles(bytes))
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
        mStage = Stage::Sort;
        break;
    case Stage::Sort:
        sort(mProblems);
        mStage = Stage::Done;
        break;
    case Stage::Done:
        break;
    }
    return done();
}

// The clock is read between groups of elements: an element takes a few
// microseconds, one whose pictures are read for the first time longer.
bool SkinChecker::runFor(int milliseconds, int elements)
{
    constexpr int kElementsBetweenClockReadings = 64;
    QElapsedTimer clock;
    clock.start();
    do {
        const int now = std::min(elements, kElementsBetweenClockReadings);
        step(now);
        elements -= now;
    } while (!done() && elements > 0 && clock.elapsed() < milliseconds);
    return done();
}

void SkinChecker::finish()
{
    // Moved, not copied: a large skin has hundreds of thousands of problems.
    mProblems = mDocumentChecker.finish(mReadingErrors);
    mProblems.append(mValueChecker.takeProblems());
    mProblems.append(mPictureChecker.finish(mWholeSkin));
}

QVector<Problem> SkinChecker::takeProblems()
{
    return std::exchange(mProblems, {});
}

namespace {

// Ranks of texts in their sorted order. A check's problems share a handful of
// files and codes, mostly one after the other in the same string: the last
// text asked for is answered without a look-up.
class TextRanks
{
public:
    void add(const QString &text)
    {
        if (!isLast(text, mLastAdded)) {
            mLastAdded = text;
            mRanks.insert(text, 0);
        }
    }

    // Once every text is added.
    void rank()
    {
        QStringList texts = mRanks.keys();
        texts.sort();
        for (int i = 0; i < texts.size(); ++i)
            mRanks[texts.at(i)] = i;
    }

    int of(const QString &text)
    {
        if (!isLast(text, mLast)) {
            mLast = text;
            mLastRank = mRanks.value(text);
        }
        return mLastRank;
    }

private:
    // The same string: most problems share their file's and their code's.
    static bool isLast(const QString &text, const QString &last)
    {
        return text.constData() == last.constData() && text.size() == last.size();
    }

    QHash<QString, int> mRanks;
    QString mLastAdded;
    QString mLast;
    int mLastRank = 0;
};

} // namespace

// A large skin has hundreds of thousands of problems: they are sorted by
// numbers, and moved once.
void SkinChecker::sort(QVector<Problem> &problems)
{
    TextRanks fileRanks;
    TextRanks codeRanks;
    for (const Problem &p : problems) {
        fileRanks.add(p.file);
        codeRanks.add(p.code);
    }
    fileRanks.rank();
    codeRanks.rank();
    struct Key
    {
        int file;
        qint64 line;
        qint64 column;
        int code;
        qsizetype index;
    };
    std::vector<Key> keys;
    keys.reserve(size_t(problems.size()));
    for (qsizetype i = 0; i < problems.size(); ++i) {
        const Problem &p = problems.at(i);
        keys.push_back({ fileRanks.of(p.file), p.line, p.column, codeRanks.of(p.code), i });
    }
    // The index last keeps problems of one place in the order they were found.
    std::sort(keys.begin(), keys.end(), [](const Key &a, const Key &b) {
        return std::tie(a.file, a.line, a.column, a.code, a.index) < std::tie(b.file, b.line, b.column, b.code, b.index);
    });
    QVector<Problem> sorted;
    sorted.reserve(problems.size());
    for (const Key &key : keys)
        sorted.append(std::move(problems[key.index]));
    problems = std::move(sorted);
}
