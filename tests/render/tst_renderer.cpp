// SPDX-License-Identifier: MIT
// Pictures, lists, boxes, z order, used layers and the selected object.

#include "tst_renderer_fixture.h"
#include "ElementPainter.h"

#include <QtTest>

using namespace TestColours;

namespace {
QRgb at(const QImage &image, int x, int y)
{
    return image.pixel(x, y) | 0xFF000000u;
}

DrawnBox box(int left, int top, int width, int height)
{
    DrawnBox b;
    b.left = left;
    b.top = top;
    b.width = width;
    b.height = height;
    return b;
}
} // namespace

namespace QTest {
template<>
char *toString(const DrawnBox &b)
{
    return qstrdup(QByteArray("(" + QByteArray::number(b.left) + ", " + QByteArray::number(b.top) + ", "
                              + QByteArray::number(b.width) + " x " + QByteArray::number(b.height) + ")")
                       .constData());
}
} // namespace QTest

class TestRenderer : public QObject
{
    Q_OBJECT

private slots:
    void centredPictureStartsHalfItsWidthLeftOfX()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.read("<LAYER L>\n<BUTTON b x=10 y=20 bmp=p.bmp bmpalign=center>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), box(-10, 20, 40, 30));
        QCOMPARE(at(f.canvas, 0, 20), kRed);
        QCOMPARE(at(f.canvas, 29, 49), kRed);
        QCOMPARE(at(f.canvas, 30, 20), kCanvas);
        QCOMPARE(at(f.canvas, 29, 50), kCanvas);
        QCOMPARE(at(f.canvas, 0, 19), kCanvas);
    }

    void centredAndBottomAlignedPictureEndsAtY()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.read("<LAYER L>\n<BUTTON b x=10 y=20 bmp=p.bmp bmpalign=center bmpvalign=bottom>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), box(-10, -10, 40, 30));
        QCOMPARE(at(f.canvas, 29, 19), kRed);
        QCOMPARE(at(f.canvas, 29, 20), kCanvas);
    }

    void rightAlignedPictureEndsAtX()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.read("<LAYER L>\n<BUTTON b x=50 y=20 bmp=p.bmp bmpalign=RIGHT bmpvalign=center>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), box(10, 5, 40, 30));
    }

    void pictureAlignmentOffsetsAreNotApplied()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.read("<LAYER L>\n<BUTTON a x=10 y=20 bmp=p.bmp bmpalign=center+5 bmpvalign=+7>\n"
               "<BUTTON b x=10 y=20 bmp=p.bmp bmpalign=-3>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "a"), box(-10, 20, 40, 30));
        QCOMPARE(f.draw("L", "b"), box(10, 20, 40, 30));
    }

    void spriteCountGivesTheFrameHeightAndOnlyTheTopFrameIsDrawn()
    {
        RenderFixture f;
        f.picture("strip.bmp", stackedFrames(10, 10, { kRed, kGreen, kBlue }));
        f.read("<LAYER L>\n<BUTTON b x=5 y=5 bmp=strip.bmp#3>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), box(5, 5, 10, 10));
        QCOMPARE(at(f.canvas, 5, 14), kRed);
        QCOMPARE(at(f.canvas, 5, 15), kCanvas);
    }

    void spriteCountZeroSkipsThePicture()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.read("<LAYER L>\n<BUTTON b x=5 y=5 bmp=p.bmp#0 sprind=p.bmp#0 iconspr=p.bmp#0>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), DrawnBox());
        QCOMPARE(at(f.canvas, 10, 10), kCanvas);
    }

    void spriteDescriptorStripesAndGrabCentre()
    {
        RenderFixture f;
        f.picture("s.bmp", stackedFrames(20, 12, { kRed, kBlue, kGreen }));
        f.file("s.spr", "[Sprite]\r\nStripes = 12\r\nDefFlags = GRAB_CENTER\r\n");
        f.read("<LAYER L>\n<BUTTON b x=50 y=50 bmp=s.spr>\n</LAYER>\n");
        // Grab-centre centres both ways whatever bmpalign and bmpvalign say.
        QCOMPARE(f.draw("L", "b"), box(40, 44, 20, 12));
        QCOMPARE(at(f.canvas, 40, 44), kRed);
        QCOMPARE(at(f.canvas, 59, 55), kRed);
        QCOMPARE(at(f.canvas, 59, 56), kCanvas);
    }

    void spriteObjectIsCentredAgainWithinItsWidth()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.read("<LAYER L>\n"
               "<SPRITE a x=10 y=10 w=60 bmp=p.bmp align=center>\n"
               "<SPRITE b x=10 y=10 w=60 bmp=p.bmp align=center bmpalign=right>\n"
               "<SPRITE c x=10 y=10 bmp=p.bmp align=center>\n"
               "<SPRITE d x=10 y=10 w=35 bmp=p.bmp align=center>\n"
               "<BUTTON e x=10 y=10 w=60 bmp=p.bmp align=center>\n"
               "</LAYER>\n");
        QCOMPARE(f.draw("L", "a").left, 20); // 10 + (60 - 40) \ 2
        QCOMPARE(f.draw("L", "b").left, -20); // 10 - 40, then + 10
        QCOMPARE(f.draw("L", "c").left, 10); // no width: no shift
        QCOMPARE(f.draw("L", "d").left, 8); // (35 - 40) \ 2 is -2: halves go toward zero
        QCOMPARE(f.draw("L", "e").left, 10); // only sprites re-read "align"
    }

    void indicatorIsCentredOnTheMainPicture()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.picture("i.bmp", solidPicture(10, 8, kGreen));
        f.read("<LAYER L>\n<BUTTON b x=10 y=20 bmp=p.bmp sprind=i.bmp>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), box(10, 20, 40, 30));
        QCOMPARE(at(f.canvas, 24, 20), kRed);
        QCOMPARE(at(f.canvas, 25, 20), kGreen);
        QCOMPARE(at(f.canvas, 34, 27), kGreen);
        QCOMPARE(at(f.canvas, 35, 20), kRed);
        QCOMPARE(at(f.canvas, 25, 28), kRed);
    }

    void indicatorWithoutMainPictureIsNotDrawn()
    {
        RenderFixture f;
        f.picture("i.bmp", solidPicture(10, 8, kGreen));
        f.read("<LAYER L>\n<BUTTON b x=10 y=20 sprind=i.bmp>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), DrawnBox());
    }

    void boxComparesSizesNotEdges()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.picture("tall.bmp", solidPicture(10, 50, kGreen));
        f.picture("ic.bmp", solidPicture(10, 10, kBlue));
        f.read("<LAYER L>\n"
               "<BUTTON a x=10 y=20 bmp=p.bmp sprind=tall.bmp>\n"
               "<BUTTON b x=10 y=20 bmp=p.bmp iconspr=ic.bmp iconalign=+100>\n"
               "</LAYER>\n");
        QCOMPARE(f.draw("L", "a"), box(10, 20, 40, 50));
        // The icon lies at x 110, but its width 10 is below 40: the box stays.
        QCOMPARE(f.draw("L", "b"), box(10, 20, 40, 30));
        QCOMPARE(at(f.canvas, 110, 20), kBlue);
    }

    void iconCentresWithinTheObjectAndDrawsItsPhase()
    {
        RenderFixture f;
        f.picture("ic.bmp", stackedFrames(10, 10, { kRed, kGreen, kBlue }));
        f.read("<LAYER L>\n"
               "<BUTTON a x=100 y=100 w=50 h=40 iconspr=ic.bmp#3 iconalign=center iconvalign=center iconphase=1>\n"
               "<BUTTON b x=100 y=100 w=51 h=40 iconspr=ic.bmp#3 iconalign=center>\n"
               "<BUTTON c x=100 y=100 w=53 h=40 iconspr=ic.bmp#3 iconalign=center>\n"
               "</LAYER>\n");
        QCOMPARE(f.draw("L", "a"), box(120, 115, 10, 10));
        QCOMPARE(at(f.canvas, 120, 115), kGreen);
        QCOMPARE(at(f.canvas, 129, 124), kGreen);
        QCOMPARE(at(f.canvas, 129, 125), kCanvas);
        // 100 + 41 / 2 is 120.5 and 100 + 43 / 2 is 121.5: halves go to even.
        QCOMPARE(f.draw("L", "b").left, 120);
        QCOMPARE(f.draw("L", "c").left, 122);
    }

    void iconIgnoresRightAndBottomButAddsOffsets()
    {
        RenderFixture f;
        f.picture("ic.bmp", solidPicture(10, 10, kBlue));
        f.read("<LAYER L>\n"
               "<BUTTON a x=100 y=100 w=50 h=40 iconspr=ic.bmp iconalign=right+4 iconvalign=bottom-2>\n"
               "</LAYER>\n");
        QCOMPARE(f.draw("L", "a"), box(104, 98, 10, 10));
    }

    void iconCentresOnTheLastPictureDrawn()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kRed));
        f.picture("ic.bmp", solidPicture(10, 10, kBlue));
        f.read("<LAYER L>\n"
               "<BUTTON a x=20 y=20 w=100 h=100 bmp=p.bmp bmpalign=center iconspr=ic.bmp iconalign=center iconvalign=center>\n"
               "</LAYER>\n");
        // The picture moved X to 0; the icon centres on the picture's 40 x 30.
        QCOMPARE(f.draw("L", "a"), box(0, 20, 40, 30));
        QCOMPARE(f.renderer->drawnObjects().size(), 1);
        QCOMPARE(at(f.canvas, 15, 30), kBlue);
        QCOMPARE(at(f.canvas, 24, 39), kBlue);
        QCOMPARE(at(f.canvas, 14, 30), kRed);
    }

    void missingPictureDrawsThePlaceholder()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<BUTTON b x=5 y=6 bmp=nothere.bmp>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "b"), box(5, 6, 100, 50));
        QVERIFY(f.info.text().contains(QLatin1String("Unable to locate nothere.bmp in ")));
    }

    void transparentAreasShowWhatLiesBelow()
    {
        RenderFixture f;
        QImage holed = solidPicture(10, 10, kRed);
        holed.setPixel(3, 3, kMagenta);
        f.picture("holed.bmp", holed);
        f.picture("under.bmp", solidPicture(10, 10, kBlue));
        f.read("<LAYER L>\n<BUTTON top x=0 y=0 z=2 bmp=holed.bmp>\n<BUTTON under x=0 y=0 z=1 bmp=under.bmp>\n</LAYER>\n");
        f.renderer->DrawSingleLayer(f.block("L"), f.canvas);
        QCOMPARE(at(f.canvas, 3, 3), kBlue);
        QCOMPARE(at(f.canvas, 4, 3), kRed);
    }

    void highlightedPicturesAreInverted()
    {
        RenderFixture f;
        QImage p(4, 1, QImage::Format_RGB32);
        p.setPixel(0, 0, kRed);
        p.setPixel(1, 0, kMagenta);
        p.setPixel(2, 0, kGreen);
        p.setPixel(3, 0, kWhite);
        f.picture("p.bmp", p);
        f.read("<LAYER L>\n<BUTTON a x=0 y=0 bmp=p.bmp>\n<BUTTON b x=0 y=5 bmp=p.bmp>\n</LAYER>\n");
        f.renderer->setHighlighted(f.object("L", "b"));
        f.renderer->DrawSingleLayer(f.block("L"), f.canvas);
        QCOMPARE(at(f.canvas, 0, 0), kRed);
        QCOMPARE(at(f.canvas, 1, 0), kCanvas);
        QCOMPARE(at(f.canvas, 2, 0), kGreen);
        QCOMPARE(at(f.canvas, 3, 0), kWhite);
        // XOR with white: red turns cyan, magenta turns green and is drawn,
        // green turns magenta and is left out, white turns black.
        QCOMPARE(at(f.canvas, 0, 5), kCyan);
        QCOMPARE(at(f.canvas, 1, 5), kGreen);
        QCOMPARE(at(f.canvas, 2, 5), kCanvas);
        QCOMPARE(at(f.canvas, 3, 5), kBlack);
    }

    void highlightingDoesNotChangeTheCachedPicture()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(4, 4, kRed));
        f.read("<LAYER L>\n<BUTTON a x=0 y=0 bmp=p.bmp>\n</LAYER>\n");
        f.draw("L", "a", true);
        QCOMPARE(at(f.canvas, 0, 0), kCyan);
        f.draw("L", "a", false);
        QCOMPARE(at(f.canvas, 0, 0), kRed);
    }

    void listDrawsTemplatesCellByCellTheLastServingTheRest()
    {
        RenderFixture f;
        f.picture("a.bmp", solidPicture(20, 10, kRed));
        f.picture("b.bmp", solidPicture(20, 10, kBlue));
        f.read("<ELEMENT_TEMPLATE a>\n<BUTTON ia bmp=a.bmp>\n</ELEMENT_TEMPLATE>\n"
               "<ELEMENT_TEMPLATE b>\n<BUTTON ib bmp=b.bmp>\n</ELEMENT_TEMPLATE>\n"
               "<LAYER L>\n<LIST lst x=5 y=6 col=3 row=2 cellw=20 cellh=10 element_template=\"a+b\">\n</LAYER>\n");
        QCOMPARE(f.draw("L", "lst"), box(5, 6, 60, 20));
        QCOMPARE(at(f.canvas, 5, 6), kRed);
        QCOMPARE(at(f.canvas, 25, 6), kBlue);
        QCOMPARE(at(f.canvas, 45, 6), kBlue);
        QCOMPARE(at(f.canvas, 5, 16), kBlue);
        QCOMPARE(at(f.canvas, 25, 16), kBlue);
        QCOMPARE(at(f.canvas, 45, 16), kBlue);
        QStringList order;
        for (const LayerRenderer::DrawnObject &d : f.renderer->drawnObjects())
            order << QString::fromLatin1(f.renderer->nodeKeyOf(d.element));
        QCOMPARE(order, QStringList({ "LL|Elst", "La|Eia", "Lb|Eib", "Lb|Eib", "Lb|Eib", "Lb|Eib", "Lb|Eib" }));
        QCOMPARE(f.renderer->drawnObjects().at(2).box, box(25, 6, 20, 10));
    }

    void listTemplateNamesIgnoreCaseAndUnknownNamesDrawNothing()
    {
        RenderFixture f;
        f.picture("a.bmp", solidPicture(20, 10, kRed));
        f.read("<ELEMENT_TEMPLATE Cell>\n<BUTTON ia bmp=a.bmp>\n</ELEMENT_TEMPLATE>\n"
               "<LAYER L>\n<LIST lst x=0 y=0 col=2 row=1 cellw=20 cellh=10 element_template=CELL+nothing>\n"
               "<LIST none x=0 y=50 col=2 row=1 cellw=20 cellh=10>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "lst"), box(0, 0, 40, 10));
        QCOMPARE(at(f.canvas, 0, 0), kRed);
        QCOMPARE(at(f.canvas, 20, 0), kCanvas);
        QCOMPARE(f.draw("L", "none"), box(0, 50, 40, 10));
    }

    void listInsideItsOwnTemplateStops()
    {
        RenderFixture f;
        f.picture("a.bmp", solidPicture(5, 5, kRed));
        f.read("<ELEMENT_TEMPLATE a>\n<BUTTON ia bmp=a.bmp>\n"
               "<LIST inner x=5 y=0 col=2 row=1 cellw=5 cellh=5 element_template=a>\n</ELEMENT_TEMPLATE>\n"
               "<LAYER L>\n<LIST lst x=0 y=0 col=1 row=1 cellw=5 cellh=5 element_template=a>\n</LAYER>\n");
        QCOMPARE(f.draw("L", "lst"), box(0, 0, 5, 5));
        QCOMPARE(at(f.canvas, 0, 0), kRed);
        QCOMPARE(at(f.canvas, 5, 0), kCanvas);
        QCOMPARE(f.renderer->drawnObjects().size(), 3); // lst, ia, inner
    }

    void hugeGridsAreCut()
    {
        RenderFixture f;
        f.read("<ELEMENT_TEMPLATE a>\n<BUTTON ia x=1>\n</ELEMENT_TEMPLATE>\n"
               "<LAYER L>\n<LIST lst col=100000 row=100000 cellw=1 cellh=1 element_template=a>\n</LAYER>\n");
        f.draw("L", "lst");
        QCOMPARE(f.renderer->drawnObjects().size(), 1 + int(ElementPainter::kMaxCells));
    }

    void layerObjectsAreDrawnInAscendingZ()
    {
        RenderFixture f;
        f.picture("r.bmp", solidPicture(10, 10, kRed));
        f.picture("g.bmp", solidPicture(10, 10, kGreen));
        f.picture("b.bmp", solidPicture(10, 10, kBlue));
        f.read("<LAYER L z=1>\n<BUTTON a z=2 bmp=r.bmp>\n<BUTTON b z=1 bmp=b.bmp>\n"
               "<BUTTON c bmp=g.bmp>\n<BUTTON d z=abc bmp=g.bmp>\n</LAYER>\n");
        f.renderer->DrawSingleLayer(f.block("L"), f.canvas);
        QStringList order;
        for (const LayerRenderer::DrawnObject &d : f.renderer->drawnObjects())
            order << QString::fromLatin1(d.element->strName());
        // c and d have no numeric z and take the layer's 1; equal z keeps file order.
        QCOMPARE(order, QStringList({ "b", "c", "d", "a" }));
        QCOMPARE(at(f.canvas, 5, 5), kRed);
    }

    void equalZDrawsTheLaterObjectOnTop()
    {
        RenderFixture f;
        f.picture("r.bmp", solidPicture(10, 10, kRed));
        f.picture("b.bmp", solidPicture(10, 10, kBlue));
        f.read("<LAYER L>\n<BUTTON a z=3 bmp=r.bmp>\n<BUTTON b z=3.0 bmp=b.bmp>\n</LAYER>\n");
        f.renderer->DrawSingleLayer(f.block("L"), f.canvas);
        QCOMPARE(at(f.canvas, 5, 5), kBlue);
    }

    void usedLayersAreABackdropInTheirZOrder()
    {
        RenderFixture f;
        f.picture("r.bmp", solidPicture(10, 10, kRed));
        f.picture("g.bmp", solidPicture(20, 20, kGreen));
        f.picture("b.bmp", solidPicture(20, 20, kBlue));
        f.read("<LAYER back z=5>\n<BUTTON bb x=10 y=10 bmp=b.bmp>\n</LAYER>\n"
               "<LAYER mid>\n<BUTTON gg x=5 y=5 bmp=g.bmp>\n</LAYER>\n"
               "<LAYER main>\n<BUTTON rr x=0 y=0 z=-9 bmp=r.bmp>\n<USELAYER back/>\n<USELAYER mid/>\n"
               "<USELAYER missing/>\n</LAYER>\n");
        f.renderer->DrawLayer(f.block("main"), f.canvas);
        QCOMPARE(at(f.canvas, 7, 7), kRed); // the layer's own objects come last
        QCOMPARE(at(f.canvas, 12, 12), kBlue); // back (z 5) over mid (no z: 0)
        QCOMPARE(at(f.canvas, 6, 22), kGreen);
        QStringList order;
        for (const LayerRenderer::DrawnObject &d : f.renderer->drawnObjects())
            order << QString::fromLatin1(f.renderer->nodeKeyOf(d.element));
        QCOMPARE(order, QStringList({ "Lmid|Egg", "Lback|Ebb", "Lmain|Err", "Lmain|Uback", "Lmain|Umid",
                                      "Lmain|Umissing" }));
    }

    void drawLayerStartsFromTheBackground()
    {
        RenderFixture f;
        QDir().mkpath(f.skinRoot + QStringLiteral("/800_480/background"));
        solidPicture(200, 150, kYellow).save(f.skinRoot + QStringLiteral("/800_480/background/default.bmp"), "BMP");
        f.read("<LAYER L>\n</LAYER>\n");
        f.renderer->DrawLayer(f.block("L"), f.canvas);
        QCOMPARE(at(f.canvas, 100, 100), kYellow);
    }

    void redrawingDecodesNoPictureAgain()
    {
        RenderFixture f;
        f.picture("r.bmp", solidPicture(10, 10, kRed));
        f.picture("b.bmp", solidPicture(20, 20, kBlue));
        f.read("<LAYER L>\n<BUTTON a bmp=r.bmp sprind=b.bmp iconspr=r.bmp>\n<BUTTON b bmp=b.bmp>\n</LAYER>\n");
        f.renderer->DrawLayer(f.block("L"), f.canvas);
        const int decoded = f.renderer->picturesDecoded();
        QVERIFY(decoded >= 2);
        f.renderer->DrawLayer(f.block("L"), f.canvas);
        QCOMPARE(f.renderer->picturesDecoded(), decoded);
    }

    void boxesAreRememberedPerObjectAndForgottenOnRedraw()
    {
        RenderFixture f;
        f.picture("r.bmp", solidPicture(10, 10, kRed));
        f.read("<LAYER L>\n<BUTTON a x=3 y=4 bmp=r.bmp>\n</LAYER>\n<STATE st>\n<BUTTON s x=1 bmp=r.bmp>\n</STATE>\n");
        f.renderer->DrawLayer(f.block("L"), f.canvas);
        QCOMPARE(f.renderer->boxOf(f.object("L", "a")), box(3, 4, 10, 10));
        QVERIFY(f.renderer->boxOf(f.object("L", "a")).contains(5, 5));
        QVERIFY(!f.renderer->boxOf(f.object("L", "a")).contains(3, 5));
        f.renderer->DrawLayer(f.block("st"), f.canvas);
        QCOMPARE(f.renderer->boxOf(f.object("L", "a")), DrawnBox());
        QCOMPARE(f.renderer->nodeKeyOf(f.object("st", "s")), QByteArray("Sst|Es"));
    }
};

QTEST_MAIN(TestRenderer)
#include "tst_renderer.moc"
