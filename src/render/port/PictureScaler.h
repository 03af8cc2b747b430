// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QSize>

// Resizes skin pictures, whose transparent colour is exact magenta
// (255, 0, 255), without letting it bleed: the opaque pixels are scaled with
// their coverage (premultiplied, so a colour is averaged only over opaque
// neighbours), and a pixel is opaque afterwards when more than half of it was.
// Shrinking averages areas, growing interpolates smoothly (Qt's smooth scaling
// does both). Transparent pixels come out exact magenta, and no opaque pixel
// takes any of magenta's colour.
namespace PictureScaler {

// `picture` (RGB32, magenta transparent) cut into `frames` frames of equal
// height, each scaled to `frameSize`, stacked again: every frame keeps a whole
// number of rows, so "#N" cuts the result right. The result is RGB32.
QImage scaleFrames(const QImage &picture, int frames, QSize frameSize);

// The opaque colour nearest a scaled colour that the renderer does not take
// for transparent.
QRgb opaqueColour(QRgb colour);

} // namespace PictureScaler
