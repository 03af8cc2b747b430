// SPDX-License-Identifier: MIT
#include "SourceLines.h"

#include <algorithm>
#include <cstring>

SourceLines::SourceLines(const QByteArray &bytes)
    : SourceLines(uncounted(bytes))
{
    countMore(bytes, mSize);
}

SourceLines SourceLines::uncounted(const QByteArray &bytes)
{
    SourceLines lines;
    lines.mSize = bytes.size();
    lines.mStarts.push_back(0);
    return lines;
}

bool SourceLines::countMore(const QByteArray &bytes, qsizetype budget)
{
    const char *d = bytes.constData();
    const qsizetype n = mSize;
    const qsizetype stop = budget >= n - mCounted ? n : mCounted + budget;
    qsizetype i = mCounted;
    for (; i < stop; ++i) {
        const char c = d[i];
        if (c != '\n' && c != '\r')
            continue;
        // A CR LF that the piece's end cuts is one line end all the same.
        if (c == '\r' && i + 1 < n && d[i + 1] == '\n')
            ++i;
        if (i + 1 < n)
            mStarts.push_back(i + 1);
    }
    mCounted = i;
    return counted();
}

SourceLines::Position SourceLines::at(qsizetype offset) const
{
    offset = std::clamp<qsizetype>(offset, 0, mSize);
    const auto after = std::upper_bound(mStarts.begin(), mStarts.end(), offset);
    const qsizetype index = qsizetype(after - mStarts.begin()) - 1;
    return { index + 1, offset - mStarts[size_t(index)] + 1 };
}

qsizetype SourceLines::lineStart(qint64 line) const
{
    if (line < 1 || line > qint64(mStarts.size()))
        return mSize;
    return mStarts[size_t(line - 1)];
}
