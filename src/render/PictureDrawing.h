// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRgb>
#include <QSize>

class PictureCache;
class ResourceLookup;

// Copying pictures onto the canvas.
namespace PictureDrawing {

// Magenta: the transparent colour of every picture copy.
constexpr QRgb kTransparent = 0xFFFF00FFu;
// The canvas colour when a skin has no background picture.
constexpr QRgb kNoBackground = 0xFF000096u;

// Copies the rectangle (sourceX, sourceY, width, height) of `source` to (x, y) on
// `destination`, leaving out every source pixel whose colour (red, green, blue)
// equals `transparent`. Parts of the rectangle outside either picture are left
// out. The destination is turned into a 32-bit format first when it is not one.
void DrawTransparent(QImage &destination, int x, int y, int width, int height,
                     const QImage &source, int sourceX, int sourceY,
                     QRgb transparent = kTransparent);

// Draws the canvas background: the picture found by
// ResourceLookup::LocateBackground is loaded into `buffer`; when there is none,
// the buffer is filled with dark blue (0, 0, 150), sized from the skin format
// when it is set ("800_480" gives 800 x 480: the height is read from the fifth
// character on, which assumes a three-digit width) and otherwise keeping its
// size. Either way the buffer is then copied onto the canvas at (0, 0) with
// magenta transparent. Returns the buffer's size.
QSize DrawBackground(const ResourceLookup &lookup, PictureCache &cache, QImage &buffer, QImage &canvas);

} // namespace PictureDrawing
