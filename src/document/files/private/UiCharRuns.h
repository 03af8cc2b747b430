// SPDX-License-Identifier: MIT
#pragma once

#include "UiCharClasses.h"

#include <QtGlobal>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Runs of name and value characters, measured sixteen bytes at a time where the
// processor allows: most keys and values are shorter than that, so a run is
// found without a byte loop whose exit the processor cannot predict.
//
// The caller guarantees that a byte outside the run's class ends it (a line
// ends with its CR and a NUL) and that the sixteen bytes after that byte may be
// read, and, for the copying functions, written.
namespace UiCharRuns {

// Sixteen bytes are read and written at a time past the run's end.
inline constexpr int kSlack = 16;

namespace detail {

// The first CR or LF in [p, end), or `end`, a byte at a time.
inline const char *lineEndByBytes(const char *p, const char *end)
{
    while (p < end && *p != '\r' && *p != '\n')
        ++p;
    return p;
}

} // namespace detail

#if defined(__SSE2__)

namespace detail {

// Bytes b with lo <= b <= hi, as unsigned bytes.
inline __m128i inRange(__m128i x, unsigned char lo, unsigned char hi)
{
    const __m128i offset = _mm_xor_si128(_mm_sub_epi8(x, _mm_set1_epi8(char(lo))), _mm_set1_epi8(char(0x80)));
    return _mm_cmplt_epi8(offset, _mm_set1_epi8(char(0x80 + (hi - lo) + 1)));
}

inline __m128i equals(__m128i x, char c)
{
    return _mm_cmpeq_epi8(x, _mm_set1_epi8(c));
}

// Letters of either case and digits. Setting the case bit maps the two ranges
// of letters, and nothing else, onto "a".."z".
inline __m128i alphanumeric(__m128i x)
{
    return _mm_or_si128(inRange(_mm_or_si128(x, _mm_set1_epi8(0x20)), 'a', 'z'), inRange(x, '0', '9'));
}

inline __m128i nameChars(__m128i x)
{
    return _mm_or_si128(alphanumeric(x), _mm_or_si128(equals(x, '_'), equals(x, '/')));
}

inline __m128i valueChars(__m128i x)
{
    // "-", "." and "/" stand next to one another.
    const __m128i marks = _mm_or_si128(_mm_or_si128(equals(x, '_'), equals(x, '\\')),
                                       _mm_or_si128(equals(x, '+'), equals(x, '#')));
    return _mm_or_si128(_mm_or_si128(alphanumeric(x), inRange(x, '-', '/')), marks);
}

// Index of the first byte outside the class, or 16 when all are inside.
inline int firstOutside(__m128i inClass)
{
    const unsigned outside = ~unsigned(_mm_movemask_epi8(inClass)) & 0xffffu;
    return outside ? __builtin_ctz(outside) : 16;
}

inline __m128i load(const char *p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
}

inline void store(char *p, __m128i x)
{
    _mm_storeu_si128(reinterpret_cast<__m128i *>(p), x);
}

} // namespace detail

// Copies the run of name characters at `from` to `to` in lower case and
// returns its length.
inline qsizetype copyLoweredName(char *to, const char *from)
{
    using namespace detail;
    qsizetype length = 0;
    for (;;) {
        const __m128i x = load(from + length);
        const __m128i upper = inRange(x, 'A', 'Z');
        store(to + length, _mm_add_epi8(x, _mm_and_si128(upper, _mm_set1_epi8(0x20))));
        const int n = firstOutside(nameChars(x));
        length += n;
        if (n < 16)
            return length;
    }
}

// The length of the run of value characters at `p`.
inline qsizetype valueRun(const char *p)
{
    using namespace detail;
    qsizetype length = 0;
    for (;;) {
        const int n = firstOutside(valueChars(load(p + length)));
        length += n;
        if (n < 16)
            return length;
    }
}

// Copies `length` bytes; may write up to sixteen bytes past them.
inline void copyRun(char *to, const char *from, qsizetype length)
{
    if (length <= 16)
        detail::store(to, detail::load(from));
    else
        memcpy(to, from, size_t(length));
}

// The first CR or LF in [p, end), or `end`. Reads nothing at or past `end`:
// it runs over a file's bytes, which have no room after them.
inline const char *lineEnd(const char *p, const char *end)
{
    using namespace detail;
    for (; end - p >= 16; p += 16) {
        const __m128i x = load(p);
        const unsigned hits = unsigned(_mm_movemask_epi8(_mm_or_si128(equals(x, '\r'), equals(x, '\n'))));
        if (hits)
            return p + __builtin_ctz(hits);
    }
    return lineEndByBytes(p, end);
}

#else

inline qsizetype copyLoweredName(char *to, const char *from)
{
    qsizetype length = 0;
    for (unsigned char c; (c = UiCharClasses::loweredName[static_cast<unsigned char>(from[length])]) != 0; ++length)
        to[length] = char(c);
    return length;
}

inline qsizetype valueRun(const char *p)
{
    qsizetype length = 0;
    while (UiCharClasses::table[static_cast<unsigned char>(p[length])] & UiCharClasses::ValueChar)
        ++length;
    return length;
}

inline void copyRun(char *to, const char *from, qsizetype length)
{
    memcpy(to, from, size_t(length));
}

inline const char *lineEnd(const char *p, const char *end)
{
    return detail::lineEndByBytes(p, end);
}

#endif

} // namespace UiCharRuns
