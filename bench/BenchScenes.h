// SPDX-License-Identifier: MIT
#pragma once

// Scenes the drawing benchmarks share: the busiest screen of the demo skin, a
// generated 800 x 480 layer of 200 objects, and the floor every drawing figure
// is compared with (one 800 x 480 transparent copy).

#include "RenderSetup.h"
#include "SkinContext.h"
#include "StringInfoSink.h"
#include "clsKorviInterface.h"

#include <QImage>
#include <QString>
#include <memory>

namespace BenchScenes {

// Milliseconds of one 800 x 480 transparent copy, measured now.
double floorMilliseconds();

struct Scene
{
    clsKorviInterface document;
    SkinContext context;
    StringInfoSink info;
    std::unique_ptr<RenderSetup> setup;
    LayerRenderer *renderer = nullptr;
    const clsElement *layer = nullptr;
    QImage canvas{ 800, 480, QImage::Format_RGB32 };

    void start();
};

// The demo screen that draws the most objects.
void openDemo(Scene &scene);

// 200 objects: buttons with a picture and a caption, sprites with an indicator,
// texts, and icons from a strip, spread over the screen; the skin's files go
// under `root`.
void generate(Scene &scene, const QString &root);

// Runs the benchmarks of the executable under a QGuiApplication, as texts need
// the platform's fonts (offscreen unless a platform is set; no window is shown).
int runWithFonts(int argc, char **argv);

} // namespace BenchScenes
