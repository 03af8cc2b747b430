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
