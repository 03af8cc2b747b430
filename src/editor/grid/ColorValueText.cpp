// SPDX-License-Identifier: MIT
#include "ColorValueText.h"

QColor ColorValueText::presetFor(const QByteArray &value)
{
    // The digits after "#" as one hexadecimal number; reading stops at the
    // first character that is not a digit.
    quint32 number = 0;
    for (qsizetype i = 1; i < value.size() && i <= 6; ++i) {
        const char c = value.at(i);
        const bool isDigit = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
        if (!isDigit)
            break;
        number = number * 16 + quint32(QByteArray(1, c).toInt(nullptr, 16));
    }
    return QColor(int(number & 0xff), int((number >> 8) & 0xff), int((number >> 16) & 0xff));
}

QByteArray ColorValueText::valueFor(const QColor &chosen)
{
    // The colour as a number is 0xBBGGRR; its six digits are then written red
    // byte first.
    const quint32 number = quint32(chosen.red()) | (quint32(chosen.green()) << 8)
        | (quint32(chosen.blue()) << 16);
    const QByteArray digits = QByteArray::number(number, 16).toUpper().rightJustified(6, '0');
    return '#' + digits.mid(4, 2) + digits.mid(2, 2) + digits.mid(0, 2);
}
