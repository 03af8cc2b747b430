// SPDX-License-Identifier: MIT
#pragma once

#include "LayerRenderer.h"
#include "PictureCache.h"
#include "ResourceLookup.h"
#include "SkinFonts.h"

class InfoSink;
class clsKorviInterface;
struct SkinContext;

// What drawing a skin takes, made in one place for one document: the resource
// lookup over the editor-wide values, the picture cache, the skin's fonts and
// the layer renderer over them. Report lines (missing pictures and fonts) go to
// `info`. The document, the values and the sink are kept by reference.
struct RenderSetup
{
    RenderSetup(const clsKorviInterface &document, const SkinContext &context, InfoSink &info);
    RenderSetup(const RenderSetup &) = delete;
    RenderSetup &operator=(const RenderSetup &) = delete;

    ResourceLookup lookup;
    PictureCache cache;
    SkinFonts fonts;
    LayerRenderer renderer;
};
