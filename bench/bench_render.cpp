// SPDX-License-Identifier: MIT
// Redrawing a layer with a warm picture cache: the busiest screen of the demo
// skin, and a generated 800 x 480 layer of 200 objects with pictures and texts.
// Each is reported in milliseconds per redraw next to a floor measured in the
// same run: copying one 800 x 480 picture over the canvas with the transparent
// copy. "x_floor" is how many floors one redraw costs. Target: at most 8 ms per
// redraw of the 200-object layer.

#include "BenchScenes.h"
#include "LayerRenderer.h"
#include "PictureCache.h"
#include "PictureDrawing.h"
#include "ResourceLookup.h"
#include "SkinFonts.h"
#include "SkinLoader.h"
#include "StringInfoSink.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>

using namespace BenchScenes;

namespace {

void measure(benchmark::State &state, Scene &scene)
{
    scene.renderer->DrawLayer(scene.layer, scene.canvas); // warms the cache and the fonts
    const int decoded = scene.renderer->picturesDecoded();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        scene.renderer->DrawLayer(scene.layer, scene.canvas);
        benchmark::DoNotOptimize(scene.canvas.constBits());
    }
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count()
        / double(state.iterations());
    const double floor = floorMilliseconds();
    state.counters["ms_per_redraw"] = ms;
    state.counters["floor_ms"] = floor;
    state.counters["x_floor"] = ms / floor;
    state.counters["objects"] = scene.renderer->drawnObjects().size();
    // A redraw with nothing changed decodes no picture again.
    state.counters["pictures_decoded_again"] = scene.renderer->picturesDecoded() - decoded;
}

void BM_RedrawBusiestDemoLayer(benchmark::State &state)
{
    Scene scene;
    openDemo(scene);
    measure(state, scene);
}
BENCHMARK(BM_RedrawBusiestDemoLayer)->Unit(benchmark::kMillisecond);

void BM_Redraw200Objects(benchmark::State &state)
{
    QTemporaryDir dir;
    Scene scene;
    generate(scene, dir.path());
    measure(state, scene);
    state.counters["target_ms"] = 8;
}
BENCHMARK(BM_Redraw200Objects)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return runWithFonts(argc, argv);
}
