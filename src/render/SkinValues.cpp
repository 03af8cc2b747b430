// SPDX-License-Identifier: MIT
#include "SkinValues.h"

#include "AsciiCase.h"
#include "SkinNumber.h"

#include <QByteArray>
#include <algorithm>

namespace {

constexpr qint64 kCoordinateLimit = 1000000;
// Products of list grids may exceed the coordinate limit; their results are held
// within this wider bound, still far from the int range.
constexpr qint64 kComputedLimit = 1000000000;

bool startsWithWord(QByteArrayView text, const char *word)
{
    const QByteArrayView w(word);
    if (text.size() < w.size())
        return false;
    for (qsizetype i = 0; i < w.size(); ++i) {
        if (AsciiCase::lower(text[i]) != w[i])
            return false;
    }
    return true;
}

// 1-based position of the first `c`, 0 when absent.
qsizetype positionOf(QByteArrayView text, char c)
{
    return text.indexOf(c) + 1;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    c = AsciiCase::lower(c);
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// The leading hexadecimal digits of one group of four characters, unsigned.
double groupValue(QByteArrayView group)
{
    double value = 0;
    for (char c : group) {
        const int d = hexDigit(c);
        if (d < 0)
            break;
        value = value * 16 + d;
    }
    return value;
}

} // namespace

namespace SkinValues {

Alignment ParseAlign(QByteArrayView text, int defaultCode)
{
    Alignment result;
    if (startsWithWord(text, "center"))
        result.code = AlignCenter;
    else if (startsWithWord(text, "right"))
        result.code = AlignRight;
    else if (startsWithWord(text, "bottom"))
        result.code = AlignBottom;
    else
        result.code = defaultCode;

    // The two sign positions are added, not chosen between: a value holding both
    // a "-" and a "+" reads its offset from a later place. This is meant; skins
    // are drawn the way the navigation program reads them.
    const qsizetype p = positionOf(text, '-') + positionOf(text, '+');
    if (p > 0 && p <= text.size())
        result.offset = Number(text.sliced(p - 1));
    return result;
}

QRgb ParseColor(QByteArrayView text)
{
    if (text.isEmpty())
        return qRgb(0, 0, 0);
    auto channel = [text](qsizetype start) {
        if (start >= text.size())
            return 0;
        const double v = HexToNumber(text.sliced(start, std::min<qsizetype>(2, text.size() - start)));
        return int(v);
    };
    return qRgb(channel(1), channel(3), channel(5));
}

double HexToNumber(QByteArrayView text)
{
    QByteArray padded = text.toByteArray();
    const qsizetype rest = padded.size() % 4;
    if (rest != 0)
        padded.prepend(QByteArray(4 - rest, '0'));
    double value = 0;
    for (qsizetype start = 0; start < padded.size(); start += 4)
        value = value * 65536.0 + groupValue(QByteArrayView(padded).sliced(start, 4));
    return value;
}

qint64 ValOrDefault(QByteArrayView text, qint64 defaultValue)
{
    if (!SkinNumber::isWholeNumber(text))
        return defaultValue;
    return SkinNumber::roundHalfEven(SkinNumber::leading(text));
}

int Number(QByteArrayView text)
{
    const qint64 v = SkinNumber::leadingInteger(text);
    return int(std::clamp(v, -kCoordinateLimit, kCoordinateLimit));
}

int clampCoordinate(qint64 value)
{
    return int(std::clamp(value, -kComputedLimit, kComputedLimit));
}

} // namespace SkinValues
