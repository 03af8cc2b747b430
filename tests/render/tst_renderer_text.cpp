// SPDX-License-Identifier: MIT
// Texts: captions, fonts, sizes, fitting, alignment and padding.

#include "tst_renderer_fixture.h"

#include <QtTest>

using namespace TestColours;

namespace {
int width(const QFont &font, const QString &text)
{
    return QFontMetrics(font).horizontalAdvance(text);
}

int lineHeight(const QFont &font)
{
    return QFontMetrics(font).height();
}
} // namespace

class TestRendererText : public QObject
{
    Q_OBJECT

private slots:
    void leftTextStartsAtPaddingAndOffsetButNotPaddingLeft()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=10 y=20 text=Hello padding=3 paddingleft=7 align=+2 valign=+1 color=#0000FF>\n</LAYER>\n");
        const DrawnBox b = f.draw("L", "t");
        QCOMPARE(b.left, 15);
        QCOMPARE(b.top, 21);
        QCOMPARE(b.width, 0);
        QCOMPARE(b.height, 0);
        // Printed with the line's top-left corner at the start point.
        const QImage expected = referenceText(f.canvas.size(), f.fontFor("Verdana", false, 8), kBlue,
                                              { { QPoint(15, 21), QStringLiteral("Hello") } });
        QCOMPARE(f.canvas, expected);
    }

    void emptyTextObjectDrawsXXX()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=4 y=5>\n<BUTTON b x=4 y=5>\n<TEMPLATE tp>\n</LAYER>\n");
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "t")), QStringLiteral("XXX"));
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "b")), QString());
        QCOMPARE(ElementTextPainter::caption(f.document, f.document.Templates().Find("tp")), QStringLiteral("XXX"));
        f.draw("L", "b");
        QCOMPARE(f.canvas, solidPicture(200, 150, kCanvas));
        f.draw("L", "t");
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), f.fontFor("Verdana", false, 8), kBlack,
                                         { { QPoint(4, 5), QStringLiteral("XXX") } }));
    }

    void sliderWithoutTextShowsItsValueBeforeTheBar()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<SLIDER s x=0 y=0 value=50|0|100>\n<SLIDER n>\n<SLIDER v text=Vol value=50|0|100>\n</LAYER>\n");
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "s")), QStringLiteral("50"));
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "n")), QStringLiteral("XXX"));
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "v")), QStringLiteral("Vol"));
    }

    void captionBreaksLinesAtBackslashNAndKeepsQuotes()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<BUTTON b text=Route\\nSettings>\n<BUTTON q text=\"Main menu\">\n</LAYER>\n");
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "b")), QStringLiteral("Route\nSettings"));
        // Values are drawn as the document holds them, quotes and all.
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "q")), QStringLiteral("\"Main menu\""));
    }

    void fontSizeIsOneLessAndEightBelowOne_data()
    {
        QTest::addColumn<QByteArray>("fontsize");
        QTest::addColumn<int>("points");
        QTest::newRow("12 draws at 11") << QByteArray(" fontsize=12") << 11;
        QTest::newRow("empty draws at 8") << QByteArray("") << 8;
        QTest::newRow("1 draws at 8") << QByteArray(" fontsize=1") << 8;
        QTest::newRow("2 draws at 1") << QByteArray(" fontsize=2") << 1;
        QTest::newRow("word draws at 8") << QByteArray(" fontsize=big") << 8;
        QTest::newRow("leading number") << QByteArray(" fontsize=15px") << 14;
    }
    void fontSizeIsOneLessAndEightBelowOne()
    {
        QFETCH(QByteArray, fontsize);
        QFETCH(int, points);
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=2 y=3 text=Size" + fontsize + ">\n</LAYER>\n");
        f.draw("L", "t");
        QCOMPARE(f.renderer->canvasFont().pointSize, points);
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), f.fontFor("Verdana", false, points), kBlack,
                                         { { QPoint(2, 3), QStringLiteral("Size") } }));
    }

    void boldSuffixDrawsTheBoldFaceOfTheFamily()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t text=Bold font=Arialbd fontsize=13>\n<TEXT u text=Plain font=Arial>\n</LAYER>\n");
        f.draw("L", "t");
        QCOMPARE(f.renderer->canvasFont().family, f.setup->fonts.resolveFamily(QStringLiteral("Arial")));
        QVERIFY(f.renderer->canvasFont().bold);
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), f.fontFor("Arial", true, 12), kBlack,
                                         { { QPoint(0, 0), QStringLiteral("Bold") } }));
        f.draw("L", "u");
        QVERIFY(!f.renderer->canvasFont().bold);
    }

    void fontThatCannotBeSetKeepsTheFamilyBefore()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT a text=A font=Courier_New>\n<TEXT b text=B font=bd>\n</LAYER>\n");
        f.draw("L", "a");
        const QString family = f.renderer->canvasFont().family;
        f.draw("L", "b");
        QCOMPARE(f.renderer->canvasFont().family, family);
        QVERIFY(f.renderer->canvasFont().bold);
    }

    void lineTooWideShrinksOnePointAtATimeNeverBelowTwo()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=0 y=0 w=5 fontsize=12 text=Much_too_wide_for_five_pixels>\n"
               "<TEXT u x=0 y=40 w=60 fontsize=16 text=Shrinking_text>\n</LAYER>\n");
        f.draw("L", "t");
        QCOMPARE(f.renderer->canvasFont().pointSize, 2);
        f.draw("L", "u");
        int expected = 15;
        while (expected >= 3 && width(f.fontFor("Verdana", false, expected), "Shrinking_text") > 60)
            --expected;
        QVERIFY(expected < 15);
        QVERIFY(expected > 2);
        QCOMPARE(f.renderer->canvasFont().pointSize, expected);
    }

    void fittingAlsoUsesThePictureWidthLessPaddingsAndOffset()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(50, 20, kWhite));
        f.read("<LAYER L>\n<BUTTON b x=0 y=0 w=200 bmp=p.bmp fontsize=20 padding=2 paddingleft=3 paddingright=4 align=+5 text=Fit_to_picture>\n</LAYER>\n");
        f.draw("L", "b");
        const int room = 50 - 4 - 3 - 4 - 5;
        int expected = 19;
        while (expected >= 3 && width(f.fontFor("Verdana", false, expected), "Fit_to_picture") > room)
            --expected;
        QCOMPARE(f.renderer->canvasFont().pointSize, expected);
    }

    void withoutOwnSizeALineKeepsTheSizeTheLineBeforeShrankTo()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=0 y=0 w=30 text=Long_first_line\\nab>\n</LAYER>\n");
        f.draw("L", "t");
        // The first line shrank below 8; the second, short as it is, stays there.
        QVERIFY(f.renderer->canvasFont().pointSize < 8);
    }

    void rightTextEndsAtWidthLessPaddingsUsingTheWidestLine()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=10 y=20 w=150 text=A\\nBBBB align=right-1 padding=2 paddingright=3>\n</LAYER>\n");
        const DrawnBox b = f.draw("L", "t");
        const QFont font = f.fontFor("Verdana", false, 8);
        const int TW = width(font, "BBBB");
        const int x = 10 - 1 - 2 - 3 + 150 - TW;
        QCOMPARE(b.left, x);
        QCOMPARE(b.top, 20);
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), font, kBlack,
                                         { { QPoint(x, 20), "A" }, { QPoint(x, 20 + lineHeight(font)), "BBBB" } }));
    }

    void rightSliderTextUsesThePictureWidth()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kWhite));
        f.read("<LAYER L>\n<SLIDER s x=10 y=20 w=150 bmp=p.bmp value=50|0|100 align=right>\n</LAYER>\n");
        const DrawnBox b = f.draw("L", "s");
        const QFont font = f.fontFor("Verdana", false, 8);
        QCOMPARE(b.left, 10);
        // Sliders centre vertically by default, on the picture's height.
        const int y = 20 + (30 - lineHeight(font)) / 2;
        QImage expected = solidPicture(200, 150, kCanvas);
        {
            QPainter p(&expected);
            p.fillRect(10, 20, 40, 30, QColor(kWhite));
        }
        QPainter p(&expected);
        p.setFont(font);
        p.setPen(QColor(kBlack));
        p.drawText(QPoint(10 + 40 - width(font, "50"), y + QFontMetrics(font).ascent()), "50");
        p.end();
        QCOMPARE(f.canvas, expected);
    }

    void centredLinesEachCentreOnTheWidth()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=10 y=20 w=100 text=A\\nBBBB align=center+1>\n</LAYER>\n");
        const DrawnBox b = f.draw("L", "t");
        const QFont font = f.fontFor("Verdana", false, 8);
        const int x0 = 10 + 1 + (100 - width(font, "A")) / 2;
        const int x1 = 10 + 1 + (100 - width(font, "BBBB")) / 2;
        QCOMPARE(b.left, std::min(x0, x1));
        QCOMPARE(b.top, 20);
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), font, kBlack,
                                         { { QPoint(x0, 20), "A" }, { QPoint(x1, 20 + lineHeight(font)), "BBBB" } }));
    }

    void verticalAlignmentUsesTheHeightOfAllLines_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<int>("kind"); // 0 top, 1 centre, 2 bottom
        QTest::newRow("text default is top") << QByteArray("TEXT t h=60") << 0;
        QTest::newRow("centre") << QByteArray("TEXT t h=60 valign=center-2") << 1;
        QTest::newRow("bottom") << QByteArray("TEXT t h=60 valign=bottom+3") << 2;
        QTest::newRow("other objects default to centre") << QByteArray("BUTTON t h=60") << 1;
        QTest::newRow("centre without height is top") << QByteArray("TEXT t valign=center") << 0;
        QTest::newRow("bottom without height is top") << QByteArray("TEXT t valign=bottom") << 0;
    }
    void verticalAlignmentUsesTheHeightOfAllLines()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(int, kind);
        RenderFixture f;
        f.read("<LAYER L>\n<" + attributes + " x=10 y=20 text=One\\nTwo>\n</LAYER>\n");
        const DrawnBox b = f.draw("L", "t");
        const int LH = lineHeight(f.fontFor("Verdana", false, 8));
        const int DY = attributes.contains("-2") ? -2 : attributes.contains("+3") ? 3 : 0;
        const int expected = kind == 0 ? 20 + DY
                           : kind == 1 ? 20 + DY + (60 - 2 * LH) / 2
                                       : 20 + 60 - 2 * LH + DY;
        QCOMPARE(b.top, expected);
    }

    void textCentresOnTheLastPictureDrawn()
    {
        RenderFixture f;
        f.picture("p.bmp", solidPicture(40, 30, kWhite));
        f.read("<LAYER L>\n<BUTTON b x=10 y=20 w=100 h=100 bmp=p.bmp text=Hi align=center>\n</LAYER>\n");
        const DrawnBox b = f.draw("L", "b");
        QCOMPARE(b.left, 10);
        QCOMPARE(b.top, 20);
        QCOMPARE(b.width, 40);
        QCOMPARE(b.height, 30);
        const QFont font = f.fontFor("Verdana", false, 8);
        QImage expected = solidPicture(200, 150, kCanvas);
        QPainter p(&expected);
        p.fillRect(10, 20, 40, 30, QColor(kWhite));
        p.setFont(font);
        p.setPen(QColor(kBlack));
        const int x = 10 + (40 - width(font, "Hi")) / 2;
        const int y = 20 + (30 - lineHeight(font)) / 2;
        p.drawText(QPoint(x, y + QFontMetrics(font).ascent()), "Hi");
        p.end();
        QCOMPARE(f.canvas, expected);
    }

    void highlightedTextIsRed()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=3 y=4 text=Sel color=#00FF00>\n</LAYER>\n");
        f.draw("L", "t", true);
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), f.fontFor("Verdana", false, 8), kRed,
                                         { { QPoint(3, 4), QStringLiteral("Sel") } }));
    }

    void onlyAFamilyNamedExactlyLowerCaseTahomaIsMovedDown()
    {
        QVERIFY(ElementTextPainter::needsCommaCorrection(QStringLiteral("tahoma")));
        QVERIFY(!ElementTextPainter::needsCommaCorrection(QStringLiteral("Tahoma")));
        QVERIFY(!ElementTextPainter::needsCommaCorrection(QStringLiteral("TAHOMA")));
        QVERIFY(!ElementTextPainter::needsCommaCorrection(QStringLiteral("DejaVu Sans")));
        // A skin asking for "tahoma" gets the family the platform has, which is
        // not spelt that way, so its text is not moved.
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT t x=3 y=4 text=Tah font=tahoma>\n</LAYER>\n");
        f.draw("L", "t");
        QCOMPARE(f.canvas, referenceText(f.canvas.size(), f.fontFor("tahoma", false, 8), kBlack,
                                         { { QPoint(3, 4), QStringLiteral("Tah") } }));
    }
};

QTEST_MAIN(TestRendererText)
#include "tst_renderer_text.moc"
