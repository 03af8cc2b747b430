#pragma once

#include <QByteArray>

// Case changes of skin text touch the ASCII letters only: tag words, keys and
// alignment words are ASCII, and bytes of 0x80 and above stay as they are,
// whatever the user's locale.
namespace AsciiCase {

constexpr char lower(char c)
{
    return (c >= 'A' && c <= 'Z') ? char(c + ('a' - 'A')) : c;
}

constexpr char upper(char c)
{
    return (c >= 'a' && c <= 'z') ? char(c - ('a' - 'A')) : c;
}

inline void lowerInPlace(char *text, qsizetype length)
{
    for (qsizetype i = 0; i < length; ++i)
        text[i] = lower(text[i]);
}

inline QByteArray lowered(QByteArray text)
{
    lowerInPlace(text.data(), text.size());
    return text;
}

inline QByteArray uppered(QByteArray text)
{
    for (char &c : text)
        c = upper(c);
    return text;
}

} // namespace AsciiCase
