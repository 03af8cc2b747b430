// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <vector>

// Lines and columns of a file's bytes, counted as the reader counts lines (CR
// LF, a lone CR and a lone LF each end one). Made once per file that needs
// them; a look-up is a binary search.
class SourceLines
{
public:
    struct Position
    {
        // Both 1-based; the column counts bytes, a tab as one.
        qint64 line = 0;
        qint64 column = 0;
    };

    explicit SourceLines(const QByteArray &bytes);
    // Lines not counted yet, for a caller that must not wait long: countMore()
    // counts them a piece at a time. A look-up needs them all counted.
    static SourceLines uncounted(const QByteArray &bytes);
    // Counts the lines of up to `budget` more bytes; true once all are counted.
    bool countMore(const QByteArray &bytes, qsizetype budget);
    bool counted() const { return mCounted >= mSize; }

    Position at(qsizetype offset) const;
    // Where a 1-based line begins; the size of the bytes past the last line.
    qsizetype lineStart(qint64 line) const;

private:
    SourceLines() = default;

    std::vector<qsizetype> mStarts;
    qsizetype mSize = 0;
    // The bytes counted so far.
    qsizetype mCounted = 0;
};
