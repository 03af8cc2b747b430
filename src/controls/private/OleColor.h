// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>
#include <QtGlobal>

#include <optional>

// The colour values of the controls: 32-bit numbers 0x00BBGGRR, or, with the top
// bit set, the index of a system colour, which is looked up in a palette.
class OleColor
{
public:
    static constexpr quint32 SystemBit = 0x80000000u;
    static constexpr quint32 Highlight = 0x8000000Du;
    static constexpr quint32 HighlightText = 0x8000000Eu;
    static constexpr quint32 ButtonFace = 0x8000000Fu;
    static constexpr quint32 ButtonShadow = 0x80000010u;
    static constexpr quint32 ButtonText = 0x80000012u;
    static constexpr quint32 DarkShadow = 0x80000015u;

    // The colour a value stands for; nothing for a system index that has no
    // palette role, or a plain value with bits above 0x00FFFFFF.
    static std::optional<QColor> translate(quint32 value, const QPalette &palette);
    // As translate, black when the value cannot be translated.
    static QColor toColor(quint32 value, const QPalette &palette);
    // The translated colour as 0x00BBGGRR; 0 when it cannot be translated.
    static quint32 toRgb(quint32 value, const QPalette &palette);
    // 0x00BBGGRR of a colour.
    static quint32 fromColor(const QColor &color);
};
