// SPDX-License-Identifier: MIT
#pragma once

#include <QPaintDevice>

// Lengths and positions of the controls are kept in twips (1440 to the inch) and
// turned into device pixels with the logical resolution of the device that shows
// them (a widget, a printer).
class Twips
{
public:
    static constexpr int PerInch = 1440;

    static int toPixelsX(double twips, const QPaintDevice *device);
    static int toPixelsY(double twips, const QPaintDevice *device);
    static int fromPixelsX(double pixels, const QPaintDevice *device);
    static int fromPixelsY(double pixels, const QPaintDevice *device);
};
