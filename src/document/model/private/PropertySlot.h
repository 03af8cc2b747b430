// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// Where one property stands in a text buffer: its key, and right after the key
// its value.
struct PropertySlot
{
    quint32 offset;
    quint32 keyLength;
    quint32 valueLength;
};

// The same in two thirds of the room, for a key and a value each shorter than
// 64 KB, as in nearly every skin: a large skin has millions of properties.
struct CompactPropertySlot
{
    quint32 offset;
    quint16 keyLength;
    quint16 valueLength;

    // Whether lengths whose bits are or-ed together in `lengthBits` fit.
    static bool fitsLengths(quint32 lengthBits) { return lengthBits <= 0xFFFF; }
    static bool fits(const PropertySlot &slot) { return fitsLengths(slot.keyLength | slot.valueLength); }
};
