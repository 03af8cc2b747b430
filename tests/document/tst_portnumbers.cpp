// SPDX-License-Identifier: MIT
// The numbers of a skin brought to another screen: rounding by edges, offsets
// of alignments, font sizes, format names, and values that are no numbers.

#include "PortNumbers.h"
#include "PortReport.h"
#include "SaveChanges.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "clsElement.h"
#include "clsElements.h"
#include "clsKorviInterface.h"
#include "clsProperties.h"
#include "clsProperty.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray valueOf(const clsElement *element, const char *key)
{
    return element->Properties().Item(key).StringValue();
}

struct Ported
{
    QTemporaryDir dir;
    clsKorviInterface document;
    PortReport report;
    QByteArray written;

    Ported(const QByteArray &text, const PortScale &scale)
    {
        const QString source = dir.filePath(QStringLiteral("main_800_480.ui"));
        const QString output = dir.filePath(QStringLiteral("main_1024_600.ui"));
        writeTestFile(source, text);
        ReadUiFile(document, source, false);
        PortNumbers::portDocument(document, scale, QStringLiteral("main_1024_600.ui"), report);
        SaveChanges saver(document);
        saver.redirect(source, output);
        saver.save([](const QString &) { return false; });
        written = readTestFile(output);
    }
};

PortScale scaleOf(double sx, double sy)
{
    PortScale scale;
    scale.sx = sx;
    scale.sy = sy;
    scale.fromFormat = "800_480";
    scale.toFormat = "1024_600";
    return scale;
}

} // namespace

class TestPortNumbers : public QObject
{
    Q_OBJECT

private slots:
    void roundingGoesByEdgesSoTouchingBoxesStillTouch()
    {
        for (const double f : { 1.28, 1.25, 0.6, 0.34, 2.0, 0.5, 1.7777 }) {
            for (qint64 x = 0; x < 300; x += 7) {
                const qint64 w1 = 13 + x % 29;
                const qint64 w2 = 5 + x % 11;
                const qint64 x1 = PortNumbers::scaled(x, f);
                const qint64 x2 = PortNumbers::scaled(x + w1, f);
                QCOMPARE(x1 + PortNumbers::scaledSize(x, w1, f), x2);
                QCOMPARE(x2 + PortNumbers::scaledSize(x + w1, w2, f), PortNumbers::scaled(x + w1 + w2, f));
            }
        }
        QCOMPARE(PortNumbers::scaled(13, 1.28), 17);
        QCOMPARE(PortNumbers::scaled(-3, 1.28), -4);
        QCOMPARE(PortNumbers::scaled(7, 0.5), 4);
        QCOMPARE(PortNumbers::scaled(-7, 0.5), -3);
    }

    void plainNumbers()
    {
        qint64 n = 0;
        QVERIFY(PortNumbers::isPlainNumber("12", &n));
        QCOMPARE(n, 12);
        QVERIFY(PortNumbers::isPlainNumber("-4", &n));
        QCOMPARE(n, -4);
        for (const char *text : { "12px", "abc", "", "-", "+3", "1.5", "\"12\"", " 12", "<NOV>" })
            QVERIFY2(!PortNumbers::isPlainNumber(text), text);
    }

    void alignmentOffsetsAreScaledAndTheWordKept()
    {
        QByteArray out;
        QVERIFY(PortNumbers::scaleAlignOffset("center+5", 2, out));
        QCOMPARE(out, QByteArray("center+10"));
        QVERIFY(PortNumbers::scaleAlignOffset("right-3", 1.28, out));
        QCOMPARE(out, QByteArray("right-4"));
        QVERIFY(PortNumbers::scaleAlignOffset("Bottom-4", 0.5, out));
        QCOMPARE(out, QByteArray("Bottom-2"));
        QVERIFY(PortNumbers::scaleAlignOffset("center+0", 3, out));
        QCOMPARE(out, QByteArray("center+0"));
        for (const char *text : { "center", "right", "+5", "center+5px", "center+-5", "12" })
            QVERIFY2(!PortNumbers::scaleAlignOffset(text, 2, out), text);
    }

    void formatNamesAreReplacedWhereTheyStandAlone()
    {
        int count = 0;
        QCOMPARE(PortNumbers::replaceFormat("800_480", "800_480", "1024_600", count), QByteArray("1024_600"));
        QCOMPARE(PortNumbers::replaceFormat("vga\\800_480\\x.bmp", "800_480", "1024_600", count),
                 QByteArray("vga\\1024_600\\x.bmp"));
        QCOMPARE(PortNumbers::replaceFormat("main_800_480.ui", "800_480", "1024_600", count),
                 QByteArray("main_1024_600.ui"));
        QCOMPARE(count, 3);
        QCOMPARE(PortNumbers::replaceFormat("1800_4800", "800_480", "1024_600", count), QByteArray("1800_4800"));
        QCOMPARE(PortNumbers::replaceFormat("x", "800_480", "1024_600", count), QByteArray("x"));
        QCOMPARE(count, 3);
    }

    void aFontMapIsReadAndABadLineNamed()
    {
        QMap<qint64, qint64> map;
        QString error;
        QVERIFY(PortNumbers::parseFontMap("# sizes\n12 14\r\n15=18  # title\n\n", map, error));
        QCOMPARE(map.value(12), 14);
        QCOMPARE(map.value(15), 18);
        QVERIFY(!PortNumbers::parseFontMap("12 14\nbig 20\n", map, error));
        QVERIFY(error.contains(QStringLiteral("line 2")));
    }

    void everyKindOfNumberIsScaledInEveryKindOfBlock()
    {
        const QByteArray text = "<header>\r\n\t<VAR resolution=800_480>\r\n</header>\r\n"
                                "<TEMPLATE tpl w=100 h=50 fontsize=12 valign=bottom-10 padding=4>\r\n"
                                "<FONTTYPE ft fontsize=20>\r\n"
                                "; a comment line\r\n"
                                "<LAYER ui_Main x=0 y=0>\r\n"
                                "\t<TEXT a x=0 y=0 w=100 h=40 align=center+5>\r\n"
                                "\t<TEXT b x=100 y=40 w=150 h=20 paddingleft=3 paddingright=7 iconvalign=center-14>\r\n"
                                "\t<LIST l x=10 y=20 col=3 row=2 cellw=101 cellh=33 element_template=row>\r\n"
                                "</LAYER>\r\n"
                                "<STATE st_Night>\r\n\t<TEXT c x=-5 y=7>\r\n</STATE>\r\n"
                                "<ELEMENT_TEMPLATE row>\r\n\t<TEXT cell x=0 y=0 w=101 h=33>\r\n</ELEMENT_TEMPLATE>\r\n";
        Ported p(text, scaleOf(1.28, 1.25));
        const clsKorviInterface &doc = p.document;
        const clsElement *a = doc.Layers().Find("ui_Main")->SubElements().Find("a");
        const clsElement *b = doc.Layers().Find("ui_Main")->SubElements().Find("b");
        const clsElement *list = doc.Layers().Find("ui_Main")->SubElements().Find("l");
        // a ends where b starts, before and after.
        QCOMPARE(valueOf(a, "w"), QByteArray("128"));
        QCOMPARE(valueOf(b, "x"), QByteArray("128"));
        QCOMPARE(valueOf(b, "w"), QByteArray("192"));
        QCOMPARE(valueOf(a, "h"), QByteArray("50"));
        QCOMPARE(valueOf(b, "y"), QByteArray("50"));
        QCOMPARE(valueOf(b, "h"), QByteArray("25"));
        QCOMPARE(valueOf(a, "align"), QByteArray("center+6"));
        QCOMPARE(valueOf(b, "iconvalign"), QByteArray("center-17"));
        QCOMPARE(valueOf(b, "paddingleft"), QByteArray("4"));
        QCOMPARE(valueOf(b, "paddingright"), QByteArray("9"));
        // A list's cells are as wide as the cell template's box: they tile.
        QCOMPARE(valueOf(list, "cellw"), QByteArray("129"));
        QCOMPARE(valueOf(list, "cellh"), QByteArray("41"));
        QCOMPARE(valueOf(list, "col"), QByteArray("3"));
        const clsElement *cell = doc.Layers().Find("row")->SubElements().Find("cell");
        QCOMPARE(valueOf(cell, "w"), QByteArray("129"));
        QCOMPARE(valueOf(cell, "h"), QByteArray("41"));
        QCOMPARE(valueOf(doc.Layers().Find("st_Night")->SubElements().Find("c"), "x"), QByteArray("-6"));
        const clsElement *tpl = doc.Templates().Find("tpl");
        QCOMPARE(valueOf(tpl, "w"), QByteArray("128"));
        QCOMPARE(valueOf(tpl, "valign"), QByteArray("bottom-12"));
        QCOMPARE(valueOf(tpl, "padding"), QByteArray("5"));
        // Font sizes by the smaller factor.
        QCOMPARE(valueOf(tpl, "fontsize"), QByteArray("15"));
        QCOMPARE(valueOf(doc.Fonts().Find("ft"), "fontsize"), QByteArray("25"));
        QCOMPARE(valueOf(doc.Headers().Item(1), "resolution"), QByteArray("1024_600"));
        QCOMPARE(p.report.notes.size(), size_t(0));
        QCOMPARE(p.report.formatStringsRewritten, 1);
        // The file is its source with those values rewritten, the comment kept.
        QVERIFY(p.written.contains("; a comment line\r\n"));
        QCOMPARE(p.written.count("\r\n"), text.count("\r\n"));
        QVERIFY(p.written.contains("\t<TEXT b x=128 y=50 w=192 h=25 paddingleft=4 paddingright=9 iconvalign=center-17>\r\n"));
    }

    void aValueThatIsNoPlainNumberIsReportedAndKept()
    {
        const QByteArray text = "<LAYER ui_Main>\n\t<TEXT a x=12px y=abc w=\"\" h=40 fontsize=big>\n</LAYER>\n";
        Ported p(text, scaleOf(2, 2));
        const clsElement *a = p.document.Layers().Find("ui_Main")->SubElements().Find("a");
        QCOMPARE(valueOf(a, "x"), QByteArray("12px"));
        QCOMPARE(valueOf(a, "y"), QByteArray("abc"));
        QCOMPARE(valueOf(a, "h"), QByteArray("80"));
        QCOMPARE(p.report.count(QStringLiteral("value-kept")), 4);
        QCOMPARE(p.report.notes.front().nodeKey, QByteArray("Lui_Main|Ea"));
        QCOMPARE(p.report.notes.front().key, QByteArray("x"));
        QCOMPARE(p.report.notes.front().value, QByteArray("12px"));
        QVERIFY(p.report.text().contains(QStringLiteral("main_1024_600.ui Lui_Main|Ea x=12px: not a plain number")));
        QVERIFY(p.written.contains("x=12px y=abc"));
    }

    void fontSizesAreKeptMappedOrClamped()
    {
        const QByteArray text = "<FONTTYPE a fontsize=12>\n<FONTTYPE b fontsize=3>\n<FONTTYPE c fontsize=9>\n";
        PortScale keep = scaleOf(0.4, 0.5);
        keep.fonts = PortScale::Fonts::Keep;
        Ported kept(text, keep);
        QCOMPARE(valueOf(kept.document.Fonts().Find("a"), "fontsize"), QByteArray("12"));
        QCOMPARE(kept.report.notes.size(), size_t(0));

        Ported scaled(text, scaleOf(0.4, 0.5));
        QCOMPARE(valueOf(scaled.document.Fonts().Find("a"), "fontsize"), QByteArray("5"));
        QCOMPARE(valueOf(scaled.document.Fonts().Find("b"), "fontsize"), QByteArray("2"));
        QCOMPARE(scaled.report.count(QStringLiteral("font-clamped")), 1);

        PortScale map = scaleOf(0.4, 0.5);
        map.fonts = PortScale::Fonts::Map;
        map.fontMap.insert(12, 10);
        map.fontMap.insert(3, 3);
        Ported mapped(text, map);
        QCOMPARE(valueOf(mapped.document.Fonts().Find("a"), "fontsize"), QByteArray("10"));
        QCOMPARE(valueOf(mapped.document.Fonts().Find("c"), "fontsize"), QByteArray("9"));
        QCOMPARE(mapped.report.count(QStringLiteral("font-mapped")), 2);
        QCOMPARE(mapped.report.count(QStringLiteral("font-kept")), 1);
    }

    void aFittedScreenShiftsOnlyObjectsStandingInALayer()
    {
        const QByteArray text = "<TEMPLATE t x=10>\n<LAYER ui_Main>\n\t<TEXT a x=10 y=10 w=20>\n</LAYER>\n"
                                "<ELEMENT_TEMPLATE row>\n\t<TEXT cell x=10>\n</ELEMENT_TEMPLATE>\n";
        PortScale fit = scaleOf(1.25, 1.25);
        fit.offsetX = 12;
        fit.offsetY = 0;
        Ported p(text, fit);
        const clsElement *a = p.document.Layers().Find("ui_Main")->SubElements().Find("a");
        QCOMPARE(valueOf(a, "x"), QByteArray("25"));
        QCOMPARE(valueOf(a, "w"), QByteArray("25"));
        QCOMPARE(valueOf(p.document.Templates().Find("t"), "x"), QByteArray("13"));
        QCOMPARE(valueOf(p.document.Layers().Find("row")->SubElements().Find("cell"), "x"), QByteArray("13"));
    }

    void boxesThatNewlyOverlapOrLeaveTheScreenAreNoted()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("a.ui"));
        QVERIFY(writeTestFile(path, "<LAYER ui_Main>\n\t<TEXT a x=0 y=0 w=10 h=10>\n\t<TEXT b x=10 y=0 w=10 h=10>\n"
                                    "\t<TEXT c x=px y=0 w=10 h=10>\n</LAYER>\n<TEMPLATE t x=1 y=1 w=1 h=1>\n"));
        clsKorviInterface doc;
        ReadUiFile(doc, path, false);
        const auto before = PortNumbers::screenBoxes(doc);
        QCOMPARE(before.size(), size_t(1));
        QCOMPARE(before[0].size(), size_t(2));
        QCOMPARE(before[0][1].nodeKey, QByteArray("Lui_Main|Eb"));
        auto after = before;
        PortReport report;
        PortNumbers::noteBoxChanges(before, after, QSize(100, 100), QSize(50, 50), QStringLiteral("a.ui"), report);
        QCOMPARE(report.notes.size(), size_t(0));
        after[0][1].x = 9;
        after[0][0].x = 60;
        PortNumbers::noteBoxChanges(before, after, QSize(100, 100), QSize(50, 50), QStringLiteral("a.ui"), report);
        QCOMPARE(report.count(QStringLiteral("off-screen")), 1);
        QCOMPARE(report.notes.at(0).nodeKey, QByteArray("Lui_Main|Ea"));
        after[0][0].x = 0;
        report = PortReport();
        PortNumbers::noteBoxChanges(before, after, QSize(100, 100), QSize(50, 50), QStringLiteral("a.ui"), report);
        QCOMPARE(report.count(QStringLiteral("overlap")), 1);
        QCOMPARE(report.notes.at(0).message, QStringLiteral("now overlaps Lui_Main|Eb"));
    }

    void theReportIsJson()
    {
        PortReport report;
        report.fromFormat = QStringLiteral("800_480");
        report.toFormat = QStringLiteral("1024_600");
        report.note(QStringLiteral("value-kept"), QStringLiteral("f.ui"), "La|Eb", "x", "12px", QStringLiteral("why"));
        report.pictures.push_back({ QStringLiteral("p.bmp"), QStringLiteral("BM"), QSize(10, 20), QSize(13, 25), 1 });
        const QByteArray json = report.json();
        QVERIFY(json.contains("\"value\": \"12px\""));
        QVERIFY(json.contains("\"to\": \"1024_600\""));
        QVERIFY(json.contains("\"file\": \"p.bmp\""));
    }
};

QTEST_GUILESS_MAIN(TestPortNumbers)
#include "tst_portnumbers.moc"
