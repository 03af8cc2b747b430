// SPDX-License-Identifier: MIT
#include "tst_renderer_fixture.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QtTest>

namespace {
QString systemDejaVuFile()
{
    for (const char *path : { "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf",
                              "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf" }) {
        if (QFileInfo::exists(QLatin1String(path)))
            return QLatin1String(path);
    }
    return {};
}
} // namespace

class TestFonts : public QObject
{
    Q_OBJECT

private slots:
    void fontFoldersAroundTheSkin()
    {
        // An absolute folder as the system writes it ("/s" or "C:/s").
        const QString s = QFileInfo(QStringLiteral("/s")).absoluteFilePath();
        SkinContext context;
        context.UiFilePath = s + QStringLiteral("/skin/800_480/ui/main.ui");
        context.SkinDirectory = s + QStringLiteral("/skin");
        QCOMPARE(SkinFonts::fontFolders(context),
                 QStringList({ s + "/skin/800_480/fonts", s + "/skin/fonts", s + "/fonts" }));
        context.SkinDirectory.clear();
        QCOMPARE(SkinFonts::fontFolders(context), QStringList({ s + "/skin/800_480/fonts", s + "/skin/fonts" }));
    }

    void skinFontFilesAreLoadedAndUsed()
    {
        const QString source = systemDejaVuFile();
        QVERIFY2(!source.isEmpty(), "the DejaVu fonts (fonts-dejavu-core) are needed");
        RenderFixture f;
        QDir().mkpath(f.skinRoot + QStringLiteral("/fonts"));
        QVERIFY(QFile::copy(source, f.skinRoot + QStringLiteral("/fonts/SkinFont.TTF")));
        QFile ignored(f.skinRoot + QStringLiteral("/fonts/readme.txt"));
        QVERIFY(ignored.open(QIODevice::WriteOnly));
        ignored.close();

        const QStringList added = f.setup->fonts.loadSkinFonts(f.context);
        QCOMPARE(added.size(), 1);
        QVERIFY(added.first().startsWith(QLatin1String("DejaVu Sans")));
        QCOMPARE(f.setup->fonts.loadedFamilies(), added);
        // The same files are not added twice.
        QVERIFY(f.setup->fonts.loadSkinFonts(f.context).isEmpty());

        const QString family = added.first();
        f.read("<LAYER L>\n<TEXT t x=1 y=2 text=Skin font=\"" + family.toLatin1() + "\">\n</LAYER>\n");
        // Quotes in the value are part of the name; use an unquoted copy instead.
        clsProperties &properties = f.document.Layers().Find("L")->SubElements().Find("t")->Properties();
        properties.setValueAt(properties.indexOf("font"), family.toLatin1());
        f.draw("L", "t");
        QCOMPARE(f.renderer->canvasFont().family, family);
        QVERIFY(!f.info.text().contains(family));
        QCOMPARE(QFontInfo(ElementTextPainter::fontFor(family, false, 8)).family(), family);
    }

    void missingFamilyFallsBackAndIsToldOnce()
    {
        RenderFixture f;
        f.read("<LAYER L>\n<TEXT a text=A font=NoSuchFamilyAtAll>\n<TEXT b text=B font=NoSuchFamilyAtAll>\n</LAYER>\n");
        f.draw("L", "a");
        f.draw("L", "b");
        QCOMPARE(f.renderer->canvasFont().family, QStringLiteral("DejaVu Sans"));
        QCOMPARE(f.info.text(), QStringLiteral("Font NoSuchFamilyAtAll not found, drawn with DejaVu Sans\r\n"));
    }

    void metricSimilarFallbacks_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QString>("fallback");
        QTest::newRow("Verdana") << "Verdana" << "DejaVu Sans";
        QTest::newRow("Tahoma") << "tahoma" << "DejaVu Sans";
        QTest::newRow("Arial") << "ARIAL" << "Liberation Sans";
        QTest::newRow("Times New Roman") << "Times New Roman" << "Liberation Serif";
        QTest::newRow("Courier New") << "Courier New" << "Liberation Mono";
        QTest::newRow("anything else") << "Wingdings" << "DejaVu Sans";
    }
    void metricSimilarFallbacks()
    {
        QFETCH(QString, family);
        QFETCH(QString, fallback);
        QCOMPARE(SkinFonts::fallbackFamily(family), fallback);
    }

    void fallbackFamiliesAreInstalled()
    {
        QStringList missing;
        for (const char *family : { "DejaVu Sans", "Liberation Sans", "Liberation Serif", "Liberation Mono" }) {
            if (!QFontDatabase::families().contains(QLatin1String(family)))
                missing << QLatin1String(family);
        }
        QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("install fonts-dejavu-core and fonts-liberation2: ")
                                               + missing.join(QStringLiteral(", "))));
    }

    void arialIsDrawnWithItsFallbackAndReported()
    {
        RenderFixture f;
        const bool hasArial = QFontDatabase::families().contains(QStringLiteral("Arial"));
        f.read("<LAYER L>\n<TEXT a text=A font=Arial>\n</LAYER>\n");
        f.draw("L", "a");
        if (hasArial) {
            QCOMPARE(f.renderer->canvasFont().family, QStringLiteral("Arial"));
            QCOMPARE(f.info.text(), QString());
        } else {
            QCOMPARE(f.renderer->canvasFont().family, QStringLiteral("Liberation Sans"));
            QCOMPARE(f.info.text(), QStringLiteral("Font Arial not found, drawn with Liberation Sans\r\n"));
        }
    }
};

QTEST_MAIN(TestFonts)
#include "tst_fonts.moc"
