// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>

class PictureCache;
struct SkinContext;

// The size of the canvas a skin is drawn on: its default background picture's
// size, else the size the skin format names ("800_480"), else 800 x 480.
namespace CanvasSize {

QSize forSkin(const SkinContext &context, PictureCache &cache);
// "800_480" gives 800 x 480; an invalid size for anything else, or for a size
// too large to draw.
QSize ofFormat(const QString &format);

} // namespace CanvasSize
