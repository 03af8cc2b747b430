// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

struct PictureProblem;

// Decodes the skin's run-length pictures. Pixel codes of a row:
//   0-252  one pixel of palette index b (0 transparent, else palette[b + P])
//   253    P = next two bytes, little-endian (P is 0 at the start of every row)
//   254    run: index i, count n (i = 0 paints transparent)
//   255    skip: advance the column by the next byte
// The palette is always read as RGB565 words (entries 1 to N-1 at 14 + 2(i-1)),
// expanded without replicating high bits; a set "3-byte palette" flag only moves
// the row table. Index 0 is always magenta, the transparent colour.
class RlDecoder
{
public:
    // The picture is cut off here instead of exhausting memory.
    static constexpr qint64 kMaxPixels = 64000000;

    // Decodes into `image` (QImage::Format_RGB32, transparent pixels magenta)
    // and returns the picture's size. The size can have one side 0 while the
    // image is null. Malformed files never read or write out of bounds:
    // - shorter than the header, width or row count 32768 or more, or more than
    //   kMaxPixels pixels: nothing (0 x 0, null image);
    // - a palette or row table running past the end of the file: the
    //   magenta-filled picture of the header's size;
    // - a 253/254 operand past the end of the file, a row without a row-table
    //   entry, or a pixel painted with an index past the palette: decoding stops
    //   and what was drawn stays. A pixel at a column past the width is dropped.
    static QSize decode(const QByteArray &bytes, QImage &image);
    // The same, saying in `problem` (when given) what was wrong with the file:
    // unreadable for the first two cases above (no picture, or nothing of it
    // in the file), partly read for the others and for rows the row table
    // leaves out or that lie past the end of the file.
    static QSize decode(const QByteArray &bytes, QImage &image, PictureProblem *problem);
};
