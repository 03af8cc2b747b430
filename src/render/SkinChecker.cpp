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
    QVector<Problem> values = mValueChecker.takeProblems();
    QVector<Problem> pictures = mPictureChecker.finish(mWholeSkin);
    mProblems = mDocumentChecker.finish(mReadingErrors);
    mProblems.reserve(mProblems.size() + values.size() + pictures.size());
    mProblems.append(std::move(values));
    mProblems.append(std::move(pictures));
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
    // File and line in one number, column and code in another: no file has
    // 2^40 lines or columns, nor a check 2^24 files or codes.
    constexpr qint64 kMost = (qint64(1) << 40) - 1;
    const auto packed = [kMost](int high, qint64 low) {
        return quint64(high) << 40 | quint64(std::clamp<qint64>(low, 0, kMost));
    };
    struct Key
    {
        quint64 fileAndLine;
        quint64 columnAndCode;
        qsizetype index;
    };
    std::vector<Key> keys;
    keys.reserve(size_t(problems.size()));
    for (qsizetype i = 0; i < problems.size(); ++i) {
        const Problem &p = problems.at(i);
        const quint64 column = quint64(std::clamp<qint64>(p.column, 0, kMost));
        keys.push_back({ packed(fileRanks.of(p.file), p.line), column << 24 | quint64(codeRanks.of(p.code)), i });
    }
    // The index last keeps problems of one place in the order they were found.
    std::sort(keys.begin(), keys.end(), [](const Key &a, const Key &b) {
        return std::tie(a.fileAndLine, a.columnAndCode, a.index) < std::tie(b.fileAndLine, b.columnAndCode, b.index);
    });
    QVector<Problem> sorted;
    sorted.reserve(problems.size());
    for (const Key &key : keys)
        sorted.append(std::move(problems[key.index]));
    problems = std::move(sorted);
}
