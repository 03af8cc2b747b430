#pragma once

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

    UiLineScanner(QByteArray &line, LineSource *more) : mLine(line), mMore(more) { }

    qint64 position = 1;

    // Position of the first token-start character at or after `from`, or 0.
    qint64 NextTokenStart(qint64 from) const;
    // A run of bytes of the current line: 0-based offset and length. Lines only
    // ever grow at their end, so a span stays valid while a value pulls in the
    // next line.
    struct Span
    {
        qsizetype offset = 0;
        qsizetype length = 0;
    };

    // One name word, from the next token on.
    QByteArray ReadName();
    Span readNameSpan();
    // One key and its value. A key written without "=" gets the value "<NOV>",
    // told by `noValue` (the value span is then empty).
    void ReadAttribute(Span &key, Span &value, bool &noValue);

    QByteArrayView view(Span span) const { return QByteArrayView(mLine.constData() + span.offset, span.length); }
    char *data(Span span) { return mLine.data() + span.offset; }

    bool atEnd() const { return position <= 0 || position > mLine.size(); }
    char current() const { return mLine.at(position - 1); }

    // When the value begins with a quote: the value without its first and its last
    // character, whatever the last one is; otherwise the value itself, or the
    // fallback when the value is empty.
    static QByteArray StripQuotes(const QByteArray &value, const QByteArray &fallback);

    static bool isTokenStart(unsigned char c) { return UiCharClasses::table[c] & UiCharClasses::TokenStart; }
    static bool isNameChar(unsigned char c) { return UiCharClasses::table[c] & UiCharClasses::NameChar; }
    static bool isValueChar(unsigned char c) { return UiCharClasses::table[c] & UiCharClasses::ValueChar; }

private:
    Span readValue();

    QByteArray &mLine;
    LineSource *mMore;
};
