// SPDX-License-Identifier: MIT
#include "UiLineScanner.h"

#include "clsProperty.h"

#include <cstring>

// Quotes of either kind open a quoted part in which every character belongs to
// the value; a quote still open at the end of the line pulls in the next line
// (which keeps the CR of the first, the LF is lost). The value is kept with its
// quotes.
UiLineScanner::Span UiLineScanner::readQuotedValue(qint64 start, qint64 quoteAt)
{
    char quote = 0; // the quote that is open, if any
    qint64 i = quoteAt;
    for (;;) {
        if (quote == 0) {
            while (isValueChar(static_cast<unsigned char>(mData[i - 1])))
                ++i;
            if (i > mSize)
                break;
            const char c = mData[i - 1];
            if (c != '"' && c != '\'')
                break;
            quote = c;
            ++i;
            continue;
        }
        const void *close = i <= mSize ? memchr(mData + i - 1, quote, size_t(mSize - i + 1)) : nullptr;
        if (close) {
            // The closing quote ends the value just after it.
            i = static_cast<const char *>(close) - mData + 2;
            break;
        }
        QByteArray next;
        if (!mMore || !mMore->takeNextLine(next)) {
            i = mSize + 1;
            break;
        }
        i = mSize + 1;
        appendLine(next);
    }
    return endValue(start, i);
}

void UiLineScanner::appendLine(const QByteArray &next)
{
    // A line read where it stands in the file is copied before it grows.
    if (mData != mBuffer.constData())
        mBuffer = QByteArray(mData, mSize);
    mBuffer.reserve(mBuffer.size() + next.size() + UiCharRuns::kSlack);
    mBuffer.append(next);
    mData = mBuffer.constData();
    mSize = mBuffer.size();
}

QByteArray UiLineScanner::StripQuotes(const QByteArray &value, const QByteArray &fallback)
{
    if (value.isEmpty())
        return fallback;
    if (value.front() == '"' || value.front() == '\'')
        return value.size() >= 2 ? value.mid(1, value.size() - 2) : QByteArray("");
    return value;
}
