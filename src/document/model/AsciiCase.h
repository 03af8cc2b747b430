// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstring>

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

// The rule by which keys of the document are the same: equal bytes, ASCII
// letters compared without regard to case.
inline bool sameIgnoringCase(QByteArrayView a, QByteArrayView b)
{
    if (a.size() != b.size())
        return false;
    // Empty keys are equal; memcmp must not see their (possibly null) data.
    if (a.isEmpty() || std::memcmp(a.data(), b.data(), size_t(a.size())) == 0)
        return true;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && lower(a[i]) != lower(b[i]))
            return false;
    }
    return true;
}

} // namespace AsciiCase
