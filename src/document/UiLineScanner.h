#pragma once

#include "AsciiCase.h"

#include <QByteArray>
#include <array>
#include <string_view>

// The scanner's character classes, ASCII letters only:
// token start  a-z A-Z 0-9 _ \ + - " # ' / = > < ;
// name         a-z A-Z 0-9 _ /
// value        a-z A-Z 0-9 _ \ + - / # . (quotes are handled apart)
namespace UiCharClasses {

enum : unsigned char { TokenStart = 1, NameChar = 2, ValueChar = 4 };

constexpr std::array<unsigned char, 256> make()
{
    std::array<unsigned char, 256> t {};
    for (int c = 0; c < 256; ++c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
            t[size_t(c)] = TokenStart | NameChar | ValueChar;
    }
    for (char c : std::string_view("_\\+-\"#'/=><;"))
        t[static_cast<unsigned char>(c)] |= TokenStart;
    t['_'] |= NameChar | ValueChar;
    t['/'] |= NameChar | ValueChar;
    for (char c : std::string_view("\\+-#."))
        t[static_cast<unsigned char>(c)] |= ValueChar;
    return t;
}

inline constexpr std::array<unsigned char, 256> table = make();

} // namespace UiCharClasses

// The small hand-written scanner of the skin file reader. It works on one line
// and a 1-based position in it; position 0 means the end of the line was reached,
// and a position past the end behaves the same way.
//
// A quoted value may run over several lines: the scanner then asks for the next
// line and appends it to the current one.
//
// The scanning functions are inline: a large skin has millions of attributes,
// each a handful of bytes, so the cost is in the calls rather than the loops.
// Runs of name or value characters need no bounds check: a line ends with its
// CR and the array's terminating NUL, neither of which belongs to a run.
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

    UiLineScanner(QByteArray &line, LineSource *more) : mLine(line), mMore(more) { refresh(); }

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

    // One name word, from the next token on.
    QByteArray ReadName() { return view(readNameSpan()).toByteArray(); }
    Span readNameSpan() { return readWord<false>(); }

    // One key and its value. A key written without "=" gets the value "<NOV>",
    // told by `noValue` (the value span is then empty). Keys are kept in lower
    // case: the key is lowered in the line itself, which is the reader's own
    // copy, while it is scanned.
    struct Attribute
    {
        Span key;
        Span value;
        bool noValue = false;
    };
    Attribute ReadAttribute()
    {
        Attribute a;
        a.key = readWord<true>();
        if (position == 0)
            return a;
        position = NextTokenStart(position);
        if (position == 0 || mData[position - 1] != '=') {
            // A bare word: a flag. The position stays on what follows; it begins
            // the next attribute.
            a.noValue = true;
            return a;
        }
        // Leading characters that cannot start a token are passed over here as
        // anywhere else, so "x=.5" reads the value "5".
        position = NextTokenStart(position + 1);
        if (position == 0)
            return a;
        a.value = readValue();
        return a;
    }

    QByteArrayView view(Span span) const { return QByteArrayView(mData + span.offset, span.length); }

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
    template<bool lowerCase>
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
        for (unsigned char c; isNameChar(c = static_cast<unsigned char>(mData[end - 1])); ++end) {
            if constexpr (lowerCase)
                mData[end - 1] = AsciiCase::lower(char(c));
        }
        const Span word { position - 1, end - position };
        position = end;
        return word;
    }

    // Scans a value from the current position; plain values, the common case,
    // stay inline.
    Span readValue()
    {
        const qint64 start = position;
        qint64 i = position;
        while (isValueChar(static_cast<unsigned char>(mData[i - 1])))
            ++i;
        const char c = i <= mSize ? mData[i - 1] : 0;
        if (c != '"' && c != '\'')
            return endValue(start, i);
        return readQuotedValue(start, i);
    }
    Span endValue(qint64 start, qint64 end)
    {
        position = end;
        return Span { start - 1, end - start };
    }
    Span readQuotedValue(qint64 start, qint64 quoteAt);
    // The line's bytes are our own: `data()` does not detach, and the pointer
    // stays valid until the line grows.
    void refresh()
    {
        mData = mLine.data();
        mSize = mLine.size();
    }

    QByteArray &mLine;
    LineSource *mMore;
    char *mData = nullptr;
    qint64 mSize = 0;
};
