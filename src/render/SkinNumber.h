// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

// Numbers in skin values are read the way the navigation program reads them: the
// leading number of the text ("12px" gives 12), 0 when the text does not begin
// with one. The grammar: optional blanks, an optional sign, digits with an
// optional fraction (or "." and digits), an optional exponent ("e" or "E", an
// optional sign, digits). Anything else ends the number.
namespace SkinNumber {

// The leading number of the text. `consumed`, when given, receives how many bytes
// the number (with its leading blanks) took; 0 when there was none.
double leading(QByteArrayView text, qsizetype *consumed = nullptr);

// True when the whole text, blanks around it allowed, is one such number.
bool isWholeNumber(QByteArrayView text);

// Rounds to the nearest integer, halves to the even neighbour (2.5 gives 2, 3.5
// gives 4), clamped to the 64-bit range.
qint64 roundHalfEven(double value);

// leading() rounded half to even.
qint64 leadingInteger(QByteArrayView text);

} // namespace SkinNumber
