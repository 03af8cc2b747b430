// SPDX-License-Identifier: MIT
// Texts in the skin's code page: the canvas draws the text its bytes stand for.
#include "tst_renderer_fixture.h"

#include <QtTest>

using namespace TestColours;

namespace {

SkinCodec codePage(const char16_t *name)
{
    return *SkinCodec::named(QStringView(name));
}

} // namespace

class TestRendererCodePage : public QObject
{
    Q_OBJECT

private slots:
    void textIsDrawnAsItsCodePageReadsIt_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("Cyrillic, 1251") << QStringLiteral("windows-1251")
                                        << QByteArray("\"\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8\"")
                                        << QStringLiteral("\"Настройки\"");
        QTest::newRow("Central European, 1250") << QStringLiteral("windows-1250") << QByteArray("\"d\x9fwi\xeaku\"")
                                                << QStringLiteral("\"dźwięku\"");
        QTest::newRow("Greek, 1253") << QStringLiteral("windows-1253") << QByteArray("\"\xd1\xf5\xe8\xec\xdf\xf3\xe5\xe9\xf2\"")
                                     << QStringLiteral("\"Ρυθμίσεις\"");
        QTest::newRow("euro, 1252") << QStringLiteral("windows-1252") << QByteArray("\"5 \x80\"") << QStringLiteral("\"5 €\"");
    }
    void textIsDrawnAsItsCodePageReadsIt()
    {
        QFETCH(QString, page);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        RenderFixture f;
        f.document.setCodec(*SkinCodec::named(page));
        f.read("<LAYER L>\n<TEXT t x=10 y=20 text=" + bytes + " font=Verdana fontsize=12>\n</LAYER>\n");
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "t")), text);
        f.draw("L", "t");
        const QImage expected = referenceText(f.canvas.size(), f.fontFor("Verdana", false, 11), kBlack,
                                              { { QPoint(10, 20), text } });
        QCOMPARE(f.canvas, expected);
    }

    // The same bytes read in another code page draw other letters.
    void anotherCodePageDrawsOtherLetters()
    {
        const QByteArray skin = "<LAYER L>\n<TEXT t x=10 y=20 text=\"\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8\">\n</LAYER>\n";
        RenderFixture cyrillic;
        cyrillic.document.setCodec(codePage(u"windows-1251"));
        cyrillic.read(skin);
        cyrillic.draw("L", "t");
        RenderFixture western;
        western.read(skin);
        western.draw("L", "t");
        QCOMPARE(ElementTextPainter::caption(western.document, western.object("L", "t")),
                 QStringLiteral("\"Íàñòðîéêè\""));
        QVERIFY(cyrillic.canvas != western.canvas);
    }

    // A line break written as \n is found in the text, whatever the code page.
    void lineBreaksAreFoundAfterDecoding()
    {
        RenderFixture f;
        f.document.setCodec(codePage(u"windows-1251"));
        f.read("<LAYER L>\n<BUTTON b text=\"\xcc\xe5\xed\xfe\\n\xca\xe0\xf0\xf2\xe0\">\n</LAYER>\n");
        QCOMPARE(ElementTextPainter::caption(f.document, f.object("L", "b")), QStringLiteral("\"Меню\nКарта\""));
    }
};

QTEST_MAIN(TestRendererCodePage)
#include "tst_renderer_codepage.moc"
