// SPDX-License-Identifier: MIT
// The demo skin drawn layer by layer: where its pictures land, what shows
// through their transparent parts, and the selected object inverted. Texts are
// not compared as pictures: fonts differ between machines.

#include "ImageLoader.h"
#include "RenderSetup.h"
#include "SkinLoader.h"
#include "StringInfoSink.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace {

const QString kSkin = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");
const QString kOpenFile = kSkin + QStringLiteral("/800_480/ui/main_800_480.ui");

QImage picture(const QString &relative)
{
    QImage image;
    ImageLoader::LoadImageFile(kSkin + QLatin1Char('/') + relative, image);
    return image;
}

QRgb rgb(QRgb pixel)
{
    return pixel | 0xFF000000u;
}

QRgb inverted(QRgb pixel)
{
    return (pixel ^ 0x00FFFFFFu) | 0xFF000000u;
}

struct DemoSkin
{
    clsKorviInterface document;
    SkinContext context;
    StringInfoSink info;
    std::unique_ptr<RenderSetup> setup;
    LayerRenderer *renderer = nullptr;
    QImage canvas{ 800, 480, QImage::Format_RGB32 };

    DemoSkin()
    {
        const SkinLoader::OpenedSkin opened = SkinLoader::openSkinFile(document, kOpenFile);
        context.UiFilePath = kOpenFile;
        context.SkinDirectory = kSkin;
        context.SkinFormat = opened.skinFormat;
        setup = std::make_unique<RenderSetup>(document, context, info);
        renderer = &setup->renderer;
    }

    const clsElement *layer(const char *key) const { return document.Layers().Find(key); }
    const clsElement *object(const char *layerKey, const char *key) const
    {
        return layer(layerKey)->SubElements().Find(key);
    }

    void draw(const char *layerKey, const clsElement *highlighted = nullptr)
    {
        renderer->setHighlighted(highlighted);
        renderer->DrawLayer(layer(layerKey), canvas);
    }

    QRgb at(int x, int y) const { return rgb(canvas.pixel(x, y)); }

    DrawnBox box(const char *layerKey, const char *key) const { return renderer->boxOf(object(layerKey, key)); }

    // The box of the n-th drawing (from 0) of the object with this node key.
    DrawnBox drawing(const QByteArray &nodeKey, int n = 0) const
    {
        for (const LayerRenderer::DrawnObject &d : renderer->drawnObjects()) {
            if (renderer->nodeKeyOf(d.element) == nodeKey && n-- == 0)
                return d.box;
        }
        return DrawnBox();
    }
};

QString boxText(const DrawnBox &b)
{
    return QStringLiteral("%1,%2 %3x%4").arg(b.left).arg(b.top).arg(b.width).arg(b.height);
}

} // namespace

class TestDemoSkin : public QObject
{
    Q_OBJECT

private slots:
    void openingReadsTemplatesSchemeAndFile()
    {
        DemoSkin demo;
        QCOMPARE(demo.context.SkinFormat, QStringLiteral("800_480"));
        QVERIFY(demo.document.Templates().Find("tplMenuButton")->IsImported);
        QVERIFY(demo.document.Fonts().Find("ftTitle")->IsImported);
        QVERIFY(demo.layer("elRowFirst"));
        QVERIFY(demo.layer("ui_TopBar"));
        QCOMPARE(demo.document.Headers().Count(), 3);
    }

    void everyDemoPictureIsFound()
    {
        DemoSkin demo;
        for (const char *key : { "ui_Main", "ui_Settings", "ui_Map", "st_Night" })
            demo.draw(key);
        QCOMPARE(demo.info.text().contains(QLatin1String("Unable to locate")), false);
    }

    void mainMenu()
    {
        DemoSkin demo;
        demo.draw("ui_Main");
        const QImage background = picture("800_480/background/default.bmp");
        const QImage button = picture("800_480/btn_menu.bmp");
        const QImage round = picture("800_480/btn_round.bmp");
        const QImage bar = picture("800_480/topbar.bmp");
        const QImage icons = picture("common/icons.bmp");

        QCOMPARE(boxText(demo.drawing("Lui_TopBar|EsprBar")), QStringLiteral("0,0 800x56"));
        QCOMPARE(boxText(demo.box("ui_Main", "btnMap")), QStringLiteral("70,80 180x120"));
        QCOMPARE(boxText(demo.box("ui_Main", "btnHome")), QStringLiteral("310,260 180x120"));
        // Right and bottom aligned; the offsets written with them are not applied.
        QCOMPARE(boxText(demo.box("ui_Main", "btnBack")), QStringLiteral("550,260 180x120"));
        // The descriptor's stripes and grab-centre: centred on (735, 436).
        QCOMPARE(boxText(demo.box("ui_Main", "sprGo")), QStringLiteral("699,400 72x72"));

        QCOMPARE(demo.at(75, 185), rgb(button.pixel(5, 105)));
        QCOMPARE(demo.at(555, 365), rgb(button.pixel(5, 105)));
        // The rounded corner is transparent: the background shows.
        QCOMPARE(demo.at(70, 80), rgb(background.pixel(70, 80)));
        QCOMPARE(demo.at(705, 436), rgb(round.pixel(6, 36)));
        QCOMPARE(demo.at(699, 400), rgb(background.pixel(699, 400)));
        // The icon frame chosen by iconphase, centred, 14 pixels up.
        QCOMPARE(demo.at(140 + 20, 106 + 30), rgb(icons.pixel(20, 2 * 40 + 30)));
        QCOMPARE(demo.at(10, 20), rgb(bar.pixel(10, 20)));
        // Outside the tab the bar is transparent below its line.
        QCOMPARE(demo.at(100, 50), rgb(background.pixel(100, 50)));
    }

    void mainMenuWithTheMapButtonSelected()
    {
        DemoSkin demo;
        demo.draw("ui_Main", demo.object("ui_Main", "btnMap"));
        const QImage button = picture("800_480/btn_menu.bmp");
        QCOMPARE(demo.at(75, 185), inverted(button.pixel(5, 105)));
        QCOMPARE(demo.at(70, 80), rgb(qRgb(0, 255, 0)));
        QCOMPARE(demo.at(315, 265), rgb(button.pixel(5, 5)));
    }

    void settingsList()
    {
        DemoSkin demo;
        demo.draw("ui_Settings");
        const QImage first = picture("800_480/list_row_first.bmp");
        const QImage row = picture("800_480/list_row.bmp");
        const QImage check = picture("800_480/check.bmp");
        const QImage track = picture("800_480/slider_track.bmp");
        const QImage knob = picture("common/knob.bmp");
        const QImage background = picture("800_480/background/default.bmp");

        QCOMPARE(boxText(demo.box("ui_Settings", "lstSettings")), QStringLiteral("140,64 520x280"));
        // "elRowFirst+elRow": the first cell from the first template, the rest from the last.
        QCOMPARE(boxText(demo.drawing("LelRowFirst|ErowBg")), QStringLiteral("140,64 520x52"));
        QCOMPARE(boxText(demo.drawing("LelRow|ErowBg", 0)), QStringLiteral("140,120 520x52"));
        QCOMPARE(boxText(demo.drawing("LelRow|ErowBg", 3)), QStringLiteral("140,288 520x52"));
        QCOMPARE(boxText(demo.drawing("LelRow|ErowBg", 4)), QStringLiteral("10000,10000 0x0"));
        QCOMPARE(boxText(demo.drawing("LelRow|ErowCheck", 0)), QStringLiteral("610,128 36x36"));
        QCOMPARE(demo.at(142, 74), rgb(first.pixel(2, 10)));
        QCOMPARE(demo.at(142, 130), rgb(row.pixel(2, 10)));
        QVERIFY(demo.at(142, 74) != demo.at(142, 130));
        QCOMPARE(demo.at(610 + 18, 128 + 18), rgb(check.pixel(18, 18)));

        // The knob is centred on the track's centre; the box keeps the track's
        // width and takes the knob's height.
        QCOMPARE(boxText(demo.box("ui_Settings", "sldVolume")), QStringLiteral("240,364 320x36"));
        QCOMPARE(demo.at(386 + 14, 364 + 18), rgb(knob.pixel(14, 18)));
        QCOMPARE(demo.at(250, 370), rgb(track.pixel(10, 6)));
        QCOMPARE(demo.at(240, 364), rgb(background.pixel(240, 364)));
    }

    void mapOverlay()
    {
        DemoSkin demo;
        demo.draw("ui_Map");
        const QImage map = picture("800_480/map.jpg");
        const QImage bar = picture("800_480/topbar.bmp");
        const QImage compass = picture("common/vga/800_480/compass.bmp");
        const QImage icons = picture("common/icons.bmp");

        // The map (z -10) lies under the top bar (z 10), both under the layer.
        QCOMPARE(demo.at(400, 50), rgb(bar.pixel(400, 50)));
        QCOMPARE(demo.at(100, 50), rgb(map.pixel(100, 50)));
        QCOMPARE(demo.at(10, 300), rgb(map.pixel(10, 300)));
        // Found only through the skin directory's common/vga/800_480 folder.
        QCOMPARE(boxText(demo.box("ui_Map", "btnCompass")), QStringLiteral("20,64 64x64"));
        QCOMPARE(demo.at(20 + 32, 64 + 20), rgb(compass.pixel(32, 20)));
        QCOMPARE(demo.at(20, 64), rgb(map.pixel(20, 64)));
        // Icons centre; "bottom" does not act on them, its offset does.
        QCOMPARE(boxText(demo.box("ui_Map", "btnPin")), QStringLiteral("600,133 40x40"));
        QCOMPARE(demo.at(600 + 20, 133 + 10), rgb(icons.pixel(20, 80 + 10)));
        QCOMPARE(demo.at(600, 133), rgb(map.pixel(600, 133)));
        QCOMPARE(boxText(demo.box("ui_Map", "sprGo")), QStringLiteral("699,400 72x72"));
    }

    void mapWithThePinSelected()
    {
        DemoSkin demo;
        demo.draw("ui_Map", demo.object("ui_Map", "btnPin"));
        const QImage icons = picture("common/icons.bmp");
        QCOMPARE(demo.at(600 + 20, 133 + 10), inverted(icons.pixel(20, 80 + 10)));
        QCOMPARE(demo.at(600, 133), rgb(qRgb(0, 255, 0)));
    }

    void nightState()
    {
        DemoSkin demo;
        demo.draw("st_Night");
        const QImage check = picture("800_480/check.bmp");
        QCOMPARE(boxText(demo.box("st_Night", "chkNight")), QStringLiteral("366,280 36x36"));
        QCOMPARE(demo.at(366 + 10, 280 + 10), rgb(check.pixel(10, 10)));
        QCOMPARE(demo.renderer->nodeKeyOf(demo.object("st_Night", "chkNight")), QByteArray("Sst_Night|EchkNight"));
    }

    void korviRenderWritesEveryLayerTheSheetAndTheBoxes()
    {
        const QString korvi = QStringLiteral(KORVI_TOOL);
        QVERIFY2(QFile::exists(korvi), "build the korvi tool first");
        QTemporaryDir out;
        QProcess p;
        p.start(korvi, { "render", kOpenFile, "--skin-dir", kSkin, "--all-layers", "-o", out.path() + "/sheet",
                         "--boxes", out.path() + "/boxes.json" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        const QStringList expected = { "ui_Main", "ui_Settings", "ui_Map", "st_Night", "ui_TopBar", "ui_MapBase" };
        QFile index(out.path() + "/sheet/index.html");
        QVERIFY(index.open(QIODevice::ReadOnly));
        const QByteArray html = index.readAll();
        for (const QString &name : expected) {
            const QImage image(out.path() + "/sheet/" + name + ".png");
            QCOMPARE(image.size(), QSize(800, 480));
            QVERIFY(html.contains(QString(name + ".png").toUtf8()));
        }
        // Element templates are not screens of their own.
        QVERIFY(!QFile::exists(out.path() + "/sheet/elRow.png"));
        QFile boxes(out.path() + "/boxes.json");
        QVERIFY(boxes.open(QIODevice::ReadOnly));
        const QJsonArray list = QJsonDocument::fromJson(boxes.readAll()).array();
        bool found = false;
        for (const QJsonValue &v : list) {
            const QJsonObject o = v.toObject();
            if (o.value("key").toString() == QLatin1String("Lui_Main|EbtnBack")) {
                found = true;
                QCOMPARE(o.value("left").toInt(), 550);
                QCOMPARE(o.value("top").toInt(), 260);
                QCOMPARE(o.value("width").toInt(), 180);
                QCOMPARE(o.value("height").toInt(), 120);
                QCOMPARE(o.value("layer").toString(), QStringLiteral("ui_Main"));
            }
        }
        QVERIFY(found);
    }

    void korviRenderOneLayerHighlightedWithItsBoxes()
    {
        const QString korvi = QStringLiteral(KORVI_TOOL);
        QTemporaryDir out;
        QProcess p;
        p.start(korvi, { "render", kOpenFile, "--skin-dir", kSkin, "--layer", "ui_main", "--highlight",
                         "Lui_Main|EbtnMap", "--size", "640x400", "-o", out.path() + "/main.png", "--boxes",
                         out.path() + "/boxes.json" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        const QImage image(out.path() + "/main.png");
        QCOMPARE(image.size(), QSize(640, 400));
        QCOMPARE(rgb(image.pixel(70, 80)), rgb(qRgb(0, 255, 0)));
        QFile boxes(out.path() + "/boxes.json");
        QVERIFY(boxes.open(QIODevice::ReadOnly));
        const QJsonArray list = QJsonDocument::fromJson(boxes.readAll()).array();
        QCOMPARE(list.first().toObject().value("key").toString(), QStringLiteral("Lui_TopBar|EsprBar"));
        QVERIFY(!list.first().toObject().contains("layer"));
    }

    void korviRenderBoxesKeyAUsedLayerAsItsTreeNodeDoes()
    {
        const QString korvi = QStringLiteral(KORVI_TOOL);
        QTemporaryDir out;
        QProcess p;
        p.start(korvi, { "render", kOpenFile, "--skin-dir", kSkin, "--layer", "ui_Main", "-o",
                         out.path() + "/main.png", "--boxes", out.path() + "/boxes.json" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        QFile boxes(out.path() + "/boxes.json");
        QVERIFY(boxes.open(QIODevice::ReadOnly));
        QStringList keys;
        for (const QJsonValue &v : QJsonDocument::fromJson(boxes.readAll()).array())
            keys << v.toObject().value("key").toString();
        QVERIFY(keys.contains(QStringLiteral("Lui_Main|Uui_TopBar")));
        QVERIFY(!keys.contains(QStringLiteral("Lui_Main|Eui_TopBar")));
    }

    void korviRenderExitCodes()
    {
        const QString korvi = QStringLiteral(KORVI_TOOL);
        QTemporaryDir out;
        QProcess p;
        p.start(korvi, { "render", kOpenFile, "-o", out.path() + "/x.png" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 2); // neither --layer nor --all-layers
        p.start(korvi, { "render", out.path() + "/absent.ui", "--layer", "a", "-o", out.path() + "/x.png" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 1);
        // Missing pictures are reported, and the picture is still written.
        QFile ui(out.path() + "/ui/skin.ui");
        QDir().mkpath(out.path() + "/ui");
        QVERIFY(ui.open(QIODevice::WriteOnly));
        ui.write("<LAYER L>\n<BUTTON b bmp=nowhere.bmp>\n</LAYER>\n");
        ui.close();
        p.start(korvi, { "render", ui.fileName(), "--layer", "L", "-o", out.path() + "/l.png" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        QVERIFY(p.readAllStandardError().contains("Unable to locate nowhere.bmp in "));
        QCOMPARE(QImage(out.path() + "/l.png").size(), QSize(800, 480));
    }
};

QTEST_MAIN(TestDemoSkin)
#include "tst_demoskin.moc"
