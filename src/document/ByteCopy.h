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

} // namespace ByteCopy
