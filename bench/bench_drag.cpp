// SPDX-License-Identifier: MIT
// Redrawing the canvas while an object is dragged: every move of the frame
// copies the picture of the layer without the object and draws the object over
// it at its moving place. Measured on the busiest screen of the demo skin and on
// a generated 800 x 480 layer of 200 objects, in milliseconds per frame, next to
// a floor measured in the same run (copying one 800 x 480 picture with the
// transparent copy); "x_floor" is how many floors one frame costs. The picture
// without the object is made once when the drag begins ("start_ms").
// Target: under 16 ms per frame.

#include "BenchScenes.h"
#include "LayerRenderer.h"
#include "LiveDrag.h"
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

// The object dragged: the one of the layer with the largest drawn box.
const clsElement *draggedObject(Scene &scene)
{
    scene.renderer->DrawLayer(scene.layer, scene.canvas);
    const clsElement *chosen = nullptr;
    int largest = -1;
    for (const clsElement *object : scene.layer->SubElements()) {
        const DrawnBox box = scene.renderer->boxOf(object);
        if (box.width * box.height > largest) {
            largest = box.width * box.height;
            chosen = object;
        }
    }
    return chosen;
}

void measure(benchmark::State &state, Scene &scene)
{
    const clsElement *object = draggedObject(scene);
    const auto begin = std::chrono::steady_clock::now();
    const QImage background = LiveDrag::pictureWithout(*scene.renderer, scene.layer, object, scene.canvas.size());
    const double startMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    int step = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        step = (step + 3) % 120;
        const QImage frame = LiveDrag::pictureWith(*scene.renderer, background, object, QPoint(step, step / 2));
        benchmark::DoNotOptimize(frame.constBits());
    }
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count()
        / double(state.iterations());
    const double floor = floorMilliseconds();
    state.counters["ms_per_frame"] = ms;
    state.counters["start_ms"] = startMs;
    state.counters["floor_ms"] = floor;
    state.counters["x_floor"] = ms / floor;
    state.counters["target_ms"] = 16;
}

void BM_DragOnBusiestDemoLayer(benchmark::State &state)
{
    Scene scene;
    openDemo(scene);
    measure(state, scene);
}
BENCHMARK(BM_DragOnBusiestDemoLayer)->Unit(benchmark::kMillisecond);

void BM_DragOn200Objects(benchmark::State &state)
{
    QTemporaryDir dir;
    Scene scene;
    generate(scene, dir.path());
    measure(state, scene);
}
BENCHMARK(BM_DragOn200Objects)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return runWithFonts(argc, argv);
}
