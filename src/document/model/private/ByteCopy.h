// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <cstring>

namespace ByteCopy {

namespace detail {

// A run of one to two words is its first word and its last word, which
// overlap when the run is shorter than two words.
template<typename Word>
struct Ends
{
    Word head;
    Word tail;
};

template<typename Word>
Ends<Word> endsOf(const char *p, size_t length)
{
    Ends<Word> ends;
    memcpy(&ends.head, p, sizeof(Word));
    memcpy(&ends.tail, p + length - sizeof(Word), sizeof(Word));
    return ends;
}

template<typename Word>
void copyEnds(char *to, const char *from, size_t length)
{
    const Ends<Word> ends = endsOf<Word>(from, length);
    memcpy(to, &ends.head, sizeof(Word));
    memcpy(to + length - sizeof(Word), &ends.tail, sizeof(Word));
}

template<typename Word>
bool sameEnds(const char *a, const char *b, size_t length)
{
    const Ends<Word> x = endsOf<Word>(a, length);
    const Ends<Word> y = endsOf<Word>(b, length);
    return ((x.head ^ y.head) | (x.tail ^ y.tail)) == 0;
}

} // namespace detail

// Keys and values of a skin are mostly a few bytes long: two overlapping word
// copies beat a call to memcpy and a byte loop.
inline void copySmall(char *to, const char *from, quint32 length)
{
    if (length >= 8 && length <= 16) {
        detail::copyEnds<quint64>(to, from, length);
    } else if (length >= 4 && length < 8) {
        detail::copyEnds<quint32>(to, from, length);
    } else if (length > 16) {
        memcpy(to, from, length);
    } else {
        for (quint32 i = 0; i < length; ++i)
            to[i] = from[i];
    }
}

// Whether `length` bytes at `a` and at `b` are the same: names and tag words
// are short, and most compared pairs are equal, so two overlapping word
// compares beat a call to memcmp.
inline bool sameSmall(const char *a, const char *b, size_t length)
{
    if (length >= 8 && length <= 16)
        return detail::sameEnds<quint64>(a, b, length);
    if (length >= 4 && length < 8)
        return detail::sameEnds<quint32>(a, b, length);
    if (length > 16)
        return memcmp(a, b, length) == 0;
    for (size_t i = 0; i < length; ++i) {
        if (a[i] != b[i])
            return false;
    }
    return true;
}

} // namespace ByteCopy
