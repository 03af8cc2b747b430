#pragma once

#include <QtGlobal>
#include <cstring>

namespace ByteCopy {

// Keys and values of a skin are mostly a few bytes long: two overlapping word
// copies beat a call to memcpy and a byte loop.
inline void copySmall(char *to, const char *from, quint32 length)
{
    if (length >= 8 && length <= 16) {
        quint64 head, tail;
        memcpy(&head, from, 8);
        memcpy(&tail, from + length - 8, 8);
        memcpy(to, &head, 8);
        memcpy(to + length - 8, &tail, 8);
    } else if (length >= 4 && length < 8) {
        quint32 head, tail;
        memcpy(&head, from, 4);
        memcpy(&tail, from + length - 4, 4);
        memcpy(to, &head, 4);
        memcpy(to + length - 4, &tail, 4);
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
    if (length >= 8 && length <= 16) {
        quint64 a1, a2, b1, b2;
        memcpy(&a1, a, 8);
        memcpy(&b1, b, 8);
        memcpy(&a2, a + length - 8, 8);
        memcpy(&b2, b + length - 8, 8);
        return ((a1 ^ b1) | (a2 ^ b2)) == 0;
    }
    if (length >= 4 && length < 8) {
        quint32 a1, a2, b1, b2;
        memcpy(&a1, a, 4);
        memcpy(&b1, b, 4);
        memcpy(&a2, a + length - 4, 4);
        memcpy(&b2, b + length - 4, 4);
        return ((a1 ^ b1) | (a2 ^ b2)) == 0;
    }
    if (length > 16)
        return memcmp(a, b, length) == 0;
    for (size_t i = 0; i < length; ++i) {
        if (a[i] != b[i])
            return false;
    }
    return true;
}

} // namespace ByteCopy
