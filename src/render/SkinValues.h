// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QRgb>

// How the renderer reads the text values of skin properties: alignments,
// colours, hexadecimal numbers and "numeric or default" numbers.
namespace SkinValues {

// Alignment codes. Right and bottom share the codes of the navigation program;
// any code that is neither right, bottom nor centre means left (or top).
enum AlignCode : int {
    AlignLeft = 0,
    AlignRight = 1,
    AlignTop = 2,
    AlignBottom = 3,
    AlignCenter = 4,
};

struct Alignment
{
    int code = AlignLeft;
    int offset = 0;
};

// "center", "right" or "bottom" at the start of the text (ASCII case ignored),
// else `defaultCode`; an offset after a "+" or "-" whatever the word is.
Alignment ParseAlign(QByteArrayView text, int defaultCode);

// "#RRGGBB" as an opaque colour; empty text gives black. The first character is
// skipped whatever it is.
QRgb ParseColor(QByteArrayView text);

// The text read as hexadecimal, four digits at a time from the right.
double HexToNumber(QByteArrayView text);

// The value of a text that is one number as a whole (blanks around it allowed),
// rounded half to even; any other text gives `defaultValue`.
qint64 ValOrDefault(QByteArrayView text, qint64 defaultValue);

// The leading number of a property value as a whole pixel count: "12px" gives 12,
// text that does not begin with a number gives 0. Held within +-1,000,000 so that
// sums of positions and sizes can never overflow.
int Number(QByteArrayView text);

// Keeps a computed position or size within the range that Number() allows, times
// the grid of a list.
int clampCoordinate(qint64 value);

} // namespace SkinValues
