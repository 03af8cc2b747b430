// SPDX-License-Identifier: MIT
#pragma once

#include "FontMeasure.h"

#include <QImage>
#include <QString>

class clsKorviInterface;
class PictureCache;
class ResourceLookup;
class SkinFonts;

// The font the canvas is set to. It outlives single objects on purpose: an
// object whose font name cannot be used keeps the family of the object drawn
// before it, as the canvas of the navigation program's editor does.
struct CanvasFont
{
    QString family; // empty until a text sets one
    bool bold = false;
    int pointSize = 8;
};

// What every step of drawing needs: the document the values are read from, the
// picture lookup and cache, the skin's fonts, the off-screen buffer pictures are
// loaded into, the canvas font and what its texts measure.
struct DrawingContext
{
    const clsKorviInterface &document;
    const ResourceLookup &lookup;
    PictureCache &cache;
    SkinFonts &fonts;
    QImage buffer;
    CanvasFont font;
    FontMeasure measure;
};
