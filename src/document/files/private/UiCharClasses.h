// SPDX-License-Identifier: MIT
#pragma once

#include "AsciiCase.h"

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

// A name character lowered, or 0 for a byte that is not a name character: one
// look-up both ends a key and lowers it.
constexpr std::array<unsigned char, 256> makeLoweredName()
{
    std::array<unsigned char, 256> t {};
    for (int c = 0; c < 256; ++c) {
        if (table[size_t(c)] & NameChar)
            t[size_t(c)] = static_cast<unsigned char>(AsciiCase::lower(char(c)));
    }
    return t;
}

inline constexpr std::array<unsigned char, 256> loweredName = makeLoweredName();

} // namespace UiCharClasses
