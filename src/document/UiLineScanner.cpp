#include "UiLineScanner.h"

#include "clsProperty.h"

#include <cstring>

qint64 UiLineScanner::NextTokenStart(qint64 from) const
{
    if (from < 1)
        from = 1;
    const qint64 n = mLine.size();
    const char *d = mLine.constData();
    for (qint64 i = from; i <= n; ++i) {
        if (isTokenStart(static_cast<unsigned char>(d[i - 1])))
            return i;
    }
    return 0;
}

QByteArray UiLineScanner::ReadName()
{
    return view(readNameSpan()).toByteArray();
}

UiLineScanner::Span UiLineScanner::readNameSpan()
{
    position = NextTokenStart(position);
    if (position == 0)
        return {};
    if (current() == '>') {
        position = 0;
        return {};
    }
    const char *d = mLine.constData();
    const qint64 n = mLine.size();
    qint64 end = position;
    while (end <= n && isNameChar(static_cast<unsigned char>(d[end - 1])))
        ++end;
    const Span word { position - 1, end - position };
    position = end;
    return word;
}

void UiLineScanner::ReadAttribute(Span &key, Span &value, bool &noValue)
{
    key = readNameSpan();
    value = {};
    noValue = false;
    if (position == 0)
        return;
    position = NextTokenStart(position);
    if (position == 0 || current() != '=') {
        // A bare word: a flag. The position stays on what follows; it begins the
        // next attribute.
        noValue = true;
        return;
    }
    // Leading characters that cannot start a token are passed over here as
    // anywhere else, so "x=.5" reads the value "5".
    position = NextTokenStart(position + 1);
    if (position == 0)
        return;
    value = readValue();
}

// Scans a value from the current position. Quotes of either kind open a quoted
// part in which every character belongs to the value; a quote still open at the
// end of the line pulls in the next line (which keeps the CR of the first, the LF
// is lost). The value is kept with its quotes.
UiLineScanner::Span UiLineScanner::readValue()
{
    const qint64 start = position;
    char quote = 0; // the quote that is open, if any
    qint64 i = position;
    for (;;) {
        const char *d = mLine.constData();
        const qint64 n = mLine.size();
        if (quote == 0) {
            // Plain value characters: the common case, scanned in a tight loop.
            while (i <= n && isValueChar(static_cast<unsigned char>(d[i - 1])))
                ++i;
            if (i > n)
                break;
            const char c = d[i - 1];
            if (c != '"' && c != '\'')
                break;
            quote = c;
            ++i;
            continue;
        }
        const void *close = i <= n ? memchr(d + i - 1, quote, size_t(n - i + 1)) : nullptr;
        if (close) {
            // The closing quote ends the value just after it.
            i = static_cast<const char *>(close) - d + 2;
            break;
        }
        QByteArray next;
        if (!mMore || !mMore->takeNextLine(next)) {
            i = n + 1;
            break;
        }
        i = n + 1;
        mLine.append(next);
    }
    position = i;
    return Span { start - 1, i - start };
}

QByteArray UiLineScanner::StripQuotes(const QByteArray &value, const QByteArray &fallback)
{
    if (value.isEmpty())
        return fallback;
    if (value.front() == '"' || value.front() == '\'')
        return value.size() >= 2 ? value.mid(1, value.size() - 2) : QByteArray("");
    return value;
}
