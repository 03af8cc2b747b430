// SPDX-License-Identifier: MIT
// Texts in the skin's code page: the canvas draws the text its bytes stand for.
#include "tst_renderer_fixture.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QtTest>

using namespace TestColours;

namespace {

SkinCodec codePage(const char16_t *name)
{
    return *SkinCodec::named(QStringView(name));
}

// A script of the code pages a skin may be in, two of its letters and its name.
struct ScriptLetters
{
    QChar first;
    QChar second;
    QString name;
};

// A family of this system whose own glyphs lack the letters of one such
// script, and that script; empty when every font here has every one.
QPair<QString, ScriptLetters> familyLackingAScript()
{
    const ScriptLetters scripts[] = {
        { QChar(0x4E2D), QChar(0x6587), QStringLiteral("Chinese") },
        { QChar(0xAC00), QChar(0xB098), QStringLiteral("Korean") },
        { QChar(0x05D0), QChar(0x05D1), QStringLiteral("Hebrew") },
        { QChar(0x0627), QChar(0x0628), QStringLiteral("Arabic") },
        { QChar(0x0416), QChar(0x041C), QStringLiteral("Cyrillic") },
        { QChar(0x03A9), QChar(0x03B1), QStringLiteral("Greek") },
    };
    const QStringList families = QFontDatabase::families();
    for (const ScriptLetters &script : scripts) {
        for (const QString &family : families) {
            const QFont font(family);
            const QFontMetrics metrics(font);
            if (QFontInfo(font).family() == family && !metrics.inFont(script.first) && !metrics.inFont(script.second))
                return { family, script };
        }
    }
    return {};
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

    // A text of a script the skin's font lacks is still drawn (the system's
    // fallback font has the letters), and the information box says so once
    // per font and script.
    void aFontWithoutAScriptsLettersIsReportedOncePerScript()
    {
        const auto [family, script] = familyLackingAScript();
        QVERIFY2(!family.isEmpty(), "a font without the letters of one script is needed");
        StringInfoSink sink;
        SkinFonts fonts(&sink);
        const QFont font(family);
        fonts.reportMissingLetters(font, QStringLiteral("\"") + script.first + QStringLiteral("\" Abc"));
        fonts.reportMissingLetters(font, QString(script.second) + script.first);
        QCOMPARE(sink.text(), QStringLiteral("Font %1 has no %2 letters, drawn with the system's fallback font\r\n")
                                  .arg(family, script.name));

        // A font that has them says nothing.
        RenderFixture f;
        f.document.setCodec(codePage(u"windows-1251"));
        f.read("<LAYER L>\n<TEXT t x=10 y=20 text=\"\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8\">\n</LAYER>\n");
        const QFont drawnWith = f.fontFor("Verdana", false, 11);
        QVERIFY(QFontMetrics(drawnWith).inFont(QChar(0x0416)));
        f.draw("L", "t");
        QVERIFY2(!f.info.text().contains(QStringLiteral("letters")), qPrintable(f.info.text()));
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
