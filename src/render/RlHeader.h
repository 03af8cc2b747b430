// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

// The fixed part of a run-length ("RL") skin picture and the layout it implies.
// All header fields are little-endian 16-bit:
//   0 "RL" | 2 flags (bit 0: palette entries of 3 bytes, else 2) | 4 width |
//   6 height | 8 palette entries N | 10 row-table entries R
// then the palette (N entries), the row table (R entries of one byte, or 255 and
// a big-endian 16-bit length), and the pixel data, row after row.
struct RlHeader
{
    quint16 flags = 0;
    quint16 width = 0;
    quint16 height = 0;
    quint16 paletteCount = 0;
    quint16 rowCount = 0;

    static constexpr qsizetype kSize = 12;
    // Width and row-table count must stay below this.
    static constexpr int kSizeLimit = 32768;

    bool widePalette() const { return flags & 1; }
    int paletteEntrySize() const { return widePalette() ? 3 : 2; }
    // Offset of the row table: 12 + N * S.
    qint64 rowTableOffset() const { return kSize + qint64(paletteCount) * paletteEntrySize(); }

    // False when the bytes are shorter than the header. The magic is not
    // checked here: the loader has already chosen the decoder by it.
    static bool read(const QByteArray &bytes, RlHeader &header);
    // True when the bytes begin with "RL".
    static bool hasMagic(const QByteArray &bytes);
};
