// SPDX-License-Identifier: MIT
#include "Twips.h"

#include <cmath>

namespace {

// A widget that has no screen yet reports no resolution; the common 96 dpi
// stands in for it.
int dpiOr96(int dpi)
{
    return dpi > 0 ? dpi : 96;
}

int dpiX(const QPaintDevice *device)
{
    return dpiOr96(device ? device->logicalDpiX() : 0);
}

int dpiY(const QPaintDevice *device)
{
    return dpiOr96(device ? device->logicalDpiY() : 0);
}

} // namespace

int Twips::toPixelsX(double twips, const QPaintDevice *device)
{
    return int(std::lround(twips * dpiX(device) / PerInch));
}

int Twips::toPixelsY(double twips, const QPaintDevice *device)
{
    return int(std::lround(twips * dpiY(device) / PerInch));
}

int Twips::fromPixelsX(double pixels, const QPaintDevice *device)
{
    return int(std::lround(pixels * PerInch / dpiX(device)));
}

int Twips::fromPixelsY(double pixels, const QPaintDevice *device)
{
    return int(std::lround(pixels * PerInch / dpiY(device)));
}
