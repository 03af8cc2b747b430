// SPDX-License-Identifier: MIT
#include "SourceLines.h"

#include <algorithm>
#include <cstring>

SourceLines::SourceLines(const QByteArray &bytes)
    : mSize(bytes.size())
{
    const char *d = bytes.constData();
    const qsizetype n = bytes.size();
    mStarts.push_back(0);
    for (qsizetype i = 0; i < n; ++i) {
        const char c = d[i];
        if (c != '\n' && c != '\r')
            continue;
        if (c == '\r' && i + 1 < n && d[i + 1] == '\n')
            ++i;
        if (i + 1 < n)
            mStarts.push_back(i + 1);
    }
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
