// SPDX-License-Identifier: MIT
#include "BenchScenes.h"

#include "PictureDrawing.h"
#include "SkinLoader.h"
#include "UiFileReader.h"

#include <QDir>
#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <chrono>

namespace BenchScenes {

namespace {

const QString kDemoFile = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin/800_480/ui/main_800_480.ui");

} // namespace

double floorMilliseconds()
{
    QImage canvas(800, 480, QImage::Format_RGB32);
    canvas.fill(Qt::black);
    QImage picture(800, 480, QImage::Format_RGB32);
    for (int y = 0; y < 480; ++y) {
        for (int x = 0; x < 800; ++x)
            picture.setPixel(x, y, (x / 16 + y / 16) % 5 == 0 ? 0xFFFF00FFu : qRgb(x % 256, y % 256, 90));
    }
    const int rounds = 50;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < rounds; ++i) {
        PictureDrawing::DrawTransparent(canvas, 0, 0, 800, 480, picture, 0, 0);
        benchmark::DoNotOptimize(canvas.constBits());
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count() / rounds;
}

void Scene::start()
{
    setup = std::make_unique<RenderSetup>(document, context, info);
    renderer = &setup->renderer;
}

// The demo screen that draws the most objects.
void openDemo(Scene &scene)
{
    scene.context.UiFilePath = kDemoFile;
    scene.context.SkinDirectory = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");
    scene.context.SkinFormat = SkinLoader::openSkinFile(scene.document, kDemoFile).skinFormat;
    scene.start();
    int most = -1;
    for (const clsElement *block : scene.document.Layers()) {
        if (!block->IsLayer())
            continue;
        scene.renderer->DrawLayer(block, scene.canvas);
        if (scene.renderer->drawnObjects().size() > most) {
            most = scene.renderer->drawnObjects().size();
            scene.layer = block;
        }
    }
}

namespace {

QImage pictureWithHoles(int w, int h, QRgb colour)
{
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(colour);
    for (int y = 0; y < h; y += 7)
        for (int x = 0; x < w; x += 5)
            image.setPixel(x, y, 0xFFFF00FFu);
    return image;
}

} // namespace

// 200 objects: buttons with a picture and a caption, sprites with an indicator,
// texts, and icons from a strip, spread over the screen.
void generate(Scene &scene, const QString &root)
{
    QDir().mkpath(root + "/800_480/ui");
    QDir().mkpath(root + "/800_480/background");
    pictureWithHoles(800, 480, qRgb(20, 30, 40)).save(root + "/800_480/background/default.bmp", "BMP");
    pictureWithHoles(120, 48, qRgb(40, 90, 160)).save(root + "/800_480/button.bmp", "BMP");
    pictureWithHoles(60, 60, qRgb(200, 120, 40)).save(root + "/800_480/round.bmp", "BMP");
    pictureWithHoles(16, 24, qRgb(240, 240, 240)).save(root + "/800_480/knob.bmp", "BMP");
    pictureWithHoles(32, 192, qRgb(250, 250, 250)).save(root + "/800_480/icons.bmp", "BMP");
    QByteArray ui = "<TEMPLATE tplButton bmp=button.bmp w=120 h=48 font=Verdanabd fontsize=12 color=#FFFFFF align=center>\n"
                    "<LAYER ui_Busy>\n";
    for (int i = 0; i < 200; ++i) {
        const QByteArray x = QByteArray::number((i * 97) % 700);
        const QByteArray y = QByteArray::number((i * 53) % 440);
        const QByteArray n = QByteArray::number(i);
        switch (i % 4) {
        case 0:
            ui += "<BUTTON b" + n + " template=tplButton x=" + x + " y=" + y + " z=" + QByteArray::number(i % 7)
                + " text=Button_" + n + ">\n";
            break;
        case 1:
            ui += "<SPRITE s" + n + " x=" + x + " y=" + y + " w=80 bmp=round.bmp align=center sprind=knob.bmp>\n";
            break;
        case 2:
            ui += "<TEXT t" + n + " x=" + x + " y=" + y + " w=150 h=30 text=Line_" + n
                + "\\nsecond valign=center fontsize=11 color=#E0E0E0>\n";
            break;
        default:
            ui += "<BUTTON i" + n + " x=" + x + " y=" + y + " w=48 h=48 iconspr=icons.bmp#6 iconphase="
                + QByteArray::number(i % 6) + " iconalign=center iconvalign=center>\n";
        }
    }
    ui += "</LAYER>\n";
    scene.context.UiFilePath = root + "/800_480/ui/busy_800_480.ui";
    scene.context.SkinFormat = QStringLiteral("800_480");
    UiFileReader(scene.document, false).readBytes(ui, QStringLiteral("busy_800_480.ui"));
    scene.start();
    scene.layer = scene.document.Layers().Find("ui_Busy");
}

int runWithFonts(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace BenchScenes
