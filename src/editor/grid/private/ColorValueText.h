// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QColor>

// The colour chooser behind a "color" property's "..." button.
//
// The dialog is preset with the number whose hexadecimal digits are the six
// after "#", read as they stand, and that number is a colour whose lowest byte
// is red: "#FF0000" therefore presets pure blue. The chosen colour is written
// back as "#", red, green, blue. The two directions do not mirror each other;
// skin authors have always seen it so, and it is kept.
class ColorValueText
{
public:
    // The colour the dialog opens with for a value "#RRGGBB".
    static QColor presetFor(const QByteArray &value);
    // The value written for the chosen colour: "#" and six upper-case digits.
    static QByteArray valueFor(const QColor &chosen);
};
