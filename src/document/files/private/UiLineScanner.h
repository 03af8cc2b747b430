// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyPack.h"
#include "UiCharClasses.h"
#include "UiCharRuns.h"

#include <QByteArray>
#include <algorithm>

// The small hand-written scanner of the skin file reader. It works on one line
// and a 1-based position in it; position 0 means the end of the line was reached,
// and a position past the end behaves the same way.
//
// A quoted value may run over several lines: the scanner then asks for the next
// line and appends it to the current one, in a buffer of its own.
//
// The scanning functions are inline: a large skin has millions of attributes,
// each a handful of bytes, so the cost is in the calls rather than the loops.
// Runs of name or value characters need no bounds check: a line ends with its
// CR and a byte after it, neither of which belongs to a run.
class UiLineScanner
{
public:
    // Gives the next line of the file (with its trailing CR) and consumes it, or
    // returns false when there is none.
    class LineSource
    {
    public:
        virtual ~LineSource() = default;
        virtual bool takeNextLine(QByteArray &line) = 0;
    };

    // Scans the line of `size` bytes at `data`, which ends with a CR followed
    // by a byte that belongs to no run (a NUL, or the LF of a file's CR LF);
    // UiCharRuns::kSlack bytes after the CR must be readable. The line may lie
    // in the middle of a file. When a quoted value pulls in lines, the line is
    // copied into `buffer` and grows there.
    UiLineScanner(const char *data, qint64 size, QByteArray &buffer, LineSource *more)
        : mBuffer(buffer), mMore(more), mData(data), mSize(size)
    {
    }

    qint64 position = 1;

    // Position of the first token-start character at or after `from`, or 0.
    qint64 NextTokenStart(qint64 from) const
    {
        if (from < 1)
            from = 1;
        for (qint64 i = from; i <= mSize; ++i) {
            if (isTokenStart(static_cast<unsigned char>(mData[i - 1])))
                return i;
        }
        return 0;
    }

    // A run of bytes of the current line: 0-based offset and length. Lines only
    // ever grow at their end, so a span stays valid while a value pulls in the
    // next line.
    struct Span
    {
        qsizetype offset = 0;
        qsizetype length = 0;
    };

    // One name word, from the next token on. The view stays valid until the
    // line grows.
    QByteArrayView ReadName() { return view(readWord()); }

    // What ReadAttribute read.
    struct Attribute
    {
        quint32 keyLength = 0;
        quint32 valueLength = 0;
        // False for an empty key and for "/".
        bool keep = false;
        // Whether "=" and a value followed the key (else it is a flag).
        bool hasValue = false;
        // 0-based offsets in the line of the key and of the value; the value
        // ends where the scan stopped.
        qint64 keyAt = 0;
        qint64 valueAt = 0;
    };
    struct IgnoreAttribute
    {
        void operator()(const Attribute &, qint64) const { }
    };

    // Reads the attributes of a tag line from the current position into `pack`:
    // key=value pairs, and bare words (flags), which get the value "<NOV>".
    // Keys are kept in lower case. The end of the line or a ">" where a key
    // would begin ends them, and so does a "<": a second tag on the line is
    // ignored. A key that is empty or "/" is read but not kept. `onFirstKept`
    // is called when the first attribute to keep has been read, before it is
    // kept; it may throw.
    // `onRead`, when given, sees every attribute read, kept or not, with
    // where it stands in the line (see Attribute).
    template<typename OnFirstKept, typename OnRead = IgnoreAttribute>
    void ReadAttributes(PropertyPack &pack, OnFirstKept &&onFirstKept, OnRead &&onRead = IgnoreAttribute());

    // Reads one key and its value from `p` on into the end of `pack`'s text,
    // without committing them, and moves `p` past them; `end` moves when a
    // quoted value pulls in the next line. Returns false, having read nothing,
    // when the attributes end before a key: at the end of the line or at a ">".
    bool ReadAttribute(const char *&p, const char *&end, PropertyPack &pack, Attribute &read);

    QByteArrayView view(Span span) const { return QByteArrayView(mData + span.offset, span.length); }

    // The line as it stands now (it may have grown).
    const char *data() const { return mData; }
    qint64 size() const { return mSize; }

    bool atEnd() const { return position <= 0 || position > mSize; }
    char current() const { return mData[position - 1]; }

    // When the value begins with a quote: the value without its first and its last
    // character, whatever the last one is; otherwise the value itself, or the
    // fallback when the value is empty.
    static QByteArray StripQuotes(const QByteArray &value, const QByteArray &fallback);

    static bool isTokenStart(unsigned char c) { return UiCharClasses::table[c] & UiCharClasses::TokenStart; }
    static bool isNameChar(unsigned char c) { return UiCharClasses::table[c] & UiCharClasses::NameChar; }
    static bool isValueChar(unsigned char c) { return UiCharClasses::table[c] & UiCharClasses::ValueChar; }

private:
    Span readWord()
    {
        position = NextTokenStart(position);
        if (position == 0)
            return {};
        if (mData[position - 1] == '>') {
            position = 0;
            return {};
        }
        qint64 end = position;
        while (isNameChar(static_cast<unsigned char>(mData[end - 1])))
            ++end;
        const Span word { position - 1, end - position };
        position = end;
        return word;
    }

    // The first token-start character in [from, end), or `end`.
    static const char *skipToToken(const char *from, const char *end)
    {
        while (from < end && !isTokenStart(static_cast<unsigned char>(*from)))
            ++from;
        return from;
    }
    Span endValue(qint64 start, qint64 end)
    {
        position = end;
        return Span { start - 1, end - start };
    }
    Span readQuotedValue(qint64 start, qint64 quoteAt);
    void appendLine(const QByteArray &next);

    QByteArray &mBuffer;
    LineSource *mMore;
    // The pointer stays valid until the line grows. Runs are measured a block
    // at a time, so a block past the end may be read.
    const char *mData;
    qint64 mSize;
};

// One pass over the line per attribute: the key is lowered on its way into the
// pack, the value is copied after it. Pointers into the line stay valid until
// a quoted value pulls in the next line; they are worked out again after that.
// One attribute from `p` on, written at the end of the pack's text, the key
// lowered and then the value, but not yet committed. Key and value both come
// from the rest of the line, or the value is the no-value marker. It is part
// of the attribute loop's body, and only fast as such.
Q_ALWAYS_INLINE bool UiLineScanner::ReadAttribute(const char *&p, const char *&end, PropertyPack &pack, Attribute &read)
{
    static constexpr char kNoValue[] = "<NOV>";
    constexpr quint32 kNoValueLength = sizeof(kNoValue) - 1;
    p = skipToToken(p, end);
    if (p == end || *p == '>')
        return false;
    char *out = pack.reserve(size_t(end - p) + kNoValueLength + UiCharRuns::kSlack);
    const char *keyBegin = p;
    read.keyAt = keyBegin - mData;
    read.keyLength = quint32(UiCharRuns::copyLoweredName(out, p));
    p += read.keyLength;
    out += read.keyLength;
    // A lone "/" closes an empty-element tag ("<USELAYER a />"): it is no
    // attribute.
    read.keep = read.keyLength != 0 && !(read.keyLength == 1 && *keyBegin == '/');
    p = skipToToken(p, end);
    if (p == end || *p != '=') {
        // A bare word: a flag. What follows begins the next attribute.
        memcpy(out, kNoValue, kNoValueLength);
        read.valueLength = kNoValueLength;
        read.hasValue = false;
        return true;
    }
    // Characters that cannot start a token are passed over here as anywhere
    // else, so "x=.5" reads the value "5".
    p = skipToToken(p + 1, end);
    const char *valueBegin = p;
    p += UiCharRuns::valueRun(p);
    if (p < end && (*p == '"' || *p == '\'')) {
        const Span value = readQuotedValue(valueBegin - mData + 1, p - mData + 1);
        // The line may have grown and moved; the key stays where it was written.
        end = mData + mSize;
        p = mData + position - 1;
        valueBegin = mData + value.offset;
        out = pack.reserve(read.keyLength + size_t(value.length) + UiCharRuns::kSlack) + read.keyLength;
    }
    read.valueLength = quint32(p - valueBegin);
    read.hasValue = true;
    read.valueAt = valueBegin - mData;
    UiCharRuns::copyRun(out, valueBegin, read.valueLength);
    return true;
}

template<typename OnFirstKept, typename OnRead>
void UiLineScanner::ReadAttributes(PropertyPack &pack, OnFirstKept &&onFirstKept, OnRead &&onRead)
{
    bool keptAny = false;
    const char *end = mData + mSize;
    const char *p = position <= 0 ? end : std::min<const char *>(mData + position - 1, end);
    for (;;) {
        // An offset, not a pointer: a quoted value may move the line.
        const qint64 start = p - mData;
        Attribute read;
        if (!ReadAttribute(p, end, pack, read))
            break;
        if (read.keep) {
            if (!keptAny) {
                onFirstKept();
                keptAny = true;
            }
            pack.commit(read.keyLength, read.valueLength);
        }
        onRead(read, qint64(p - mData));
        if (p == end || *p == '<')
            break;
        // A character that can start neither a key nor a value is stepped over.
        if (read.keyLength == 0 && p - mData == start)
            ++p;
    }
    position = p < end ? qint64(p - mData) + 1 : 0;
}
