// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include "SkinFormatName.h"
#include "SkinLoader.h"
#include "SkinOpenPlan.h"
#include "SkinReadError.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {
} // namespace

class TestSkinLoader : public QObject
{
    Q_OBJECT

private slots:
    void skinFormatFromTheEndOfTheFileName_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("format");
        QTest::newRow("skin_800_480.ui") << "/x/skin_800_480.ui" << "800_480";
        QTest::newRow("main.ui") << "/x/main.ui" << "";
        QTest::newRow("only the format") << "800_480.ui" << "800_480";
        QTest::newRow("letters in place of digits") << "/x/main_8a0_480.ui" << "";
        QTest::newRow("dot inside the name") << "/x/a.b_320_240.ui" << "320_240";
        QTest::newRow("format in the folder only") << "/x/800_480/main.ui" << "";
        QTest::newRow("no extension") << "/x/main_480_272" << "480_272";
        QTest::newRow("four-digit width") << "/x/main_1024_600.ui" << "1024_600";
        QTest::newRow("four-digit width alone") << "1280_720.ui" << "1280_720";
        QTest::newRow("four-digit width after a digit") << "/x/main91600_960.ui" << "1600_960";
        QTest::newRow("five digits end in a four-digit format") << "/x/a_12345_678.ui" << "2345_678";
        QTest::newRow("three digits after a letter") << "/x/mainx800_480.ui" << "800_480";
        QTest::newRow("four digits of height") << "/x/main_800_4800.ui" << "";
    }
    void skinFormatFromTheEndOfTheFileName()
    {
        QFETCH(QString, path);
        QFETCH(QString, format);
        QCOMPARE(SkinLoader::skinFormatFromFileName(path), format);
    }

    void formatNamesAreWholeTexts()
    {
        QVERIFY(SkinFormatName::isFormat(QStringLiteral("800_480")));
        QVERIFY(SkinFormatName::isFormat(QStringLiteral("1024_600")));
        QVERIFY(!SkinFormatName::isFormat(QStringLiteral("x800_480")));
        QVERIFY(!SkinFormatName::isFormat(QStringLiteral("10240_600")));
        QVERIFY(!SkinFormatName::isFormat(QStringLiteral("800-480")));
        QCOMPARE(SkinFormatName::sizeOf(QStringLiteral("1024_600")), QSize(1024, 600));
        QCOMPARE(SkinFormatName::sizeOf(QStringLiteral("480_272")), QSize(480, 272));
        QVERIFY(!SkinFormatName::sizeOf(QStringLiteral("abc")).isValid());
        QCOMPARE(SkinFormatName::ofSize(QSize(1600, 960)), QStringLiteral("1600_960"));
        QCOMPARE(SkinFormatName::ofSize(QSize(800, 480)), QStringLiteral("800_480"));
    }

    void aFourDigitFormatIsTakenWhenOpeningAFile()
    {
        QTemporaryDir dir;
        const QString ui = dir.path() + "/1024_600/ui/main_1024_600.ui";
        QVERIFY(writeTestFile(ui, "<LAYER ui_Main>\n</LAYER>\n"));
        clsKorviInterface doc;
        QCOMPARE(SkinLoader::openSkinFile(doc, ui).skinFormat, QStringLiteral("1024_600"));
    }

    void templatesAndSchemeAreReadImportedBeforeTheFile()
    {
        QTemporaryDir dir;
        const QString ui = dir.path() + "/800_480/ui";
        QVERIFY(writeTestFile(ui + "/templates_b.ui", "<TEMPLATE tb fontsize=2>\n"));
        QVERIFY(writeTestFile(ui + "/Templates_A.ui", "<TEMPLATE ta fontsize=1>\n"));
        QVERIFY(writeTestFile(ui + "/templatesC.UI", "<TEMPLATE tc fontsize=3>\n"));
        QVERIFY(writeTestFile(ui + "/other.ui", "<TEMPLATE other>\n"));
        QVERIFY(writeTestFile(ui + "/my_templates.ui", "<TEMPLATE mine>\n"));
        QVERIFY(writeTestFile(dir.path() + "/800_480/main_scheme.ui", "<FONTTYPE scheme font=Arial>\n<TEMPLATE ta fontsize=9>\n"));
        QVERIFY(writeTestFile(ui + "/main_800_480.ui", "<TEMPLATE own>\n<LAYER ui_Main>\n</LAYER>\n"));

        clsKorviInterface doc;
        const SkinLoader::OpenedSkin opened = SkinLoader::openSkinFile(doc, ui + "/main_800_480.ui");
        QCOMPARE(opened.skinFormat, QStringLiteral("800_480"));
        QStringList names;
        for (const QString &f : opened.filesRead)
            names << QFileInfo(f).fileName();
        // Name order with case ignored; the scheme next; the file itself last.
        QCOMPARE(names, QStringList({ "Templates_A.ui", "templates_b.ui", "templatesC.UI", "main_scheme.ui",
                                      "main_800_480.ui" }));
        QStringList templates;
        for (const clsElement *t : doc.Templates())
            templates << QString::fromLatin1(t->ElementKey() + (t->IsImported ? "+" : "-"));
        QCOMPARE(templates, QStringList({ "ta+", "tb+", "tc+", "ta[0]+", "own-" }));
        QVERIFY(doc.Fonts().Find("scheme")->IsImported);
        QVERIFY(doc.Layers().Find("ui_Main"));
        QVERIFY(!doc.Templates().Find("other"));
        QVERIFY(!doc.Templates().Find("mine"));
    }

    void theOpenedTemplatesFileIsNotReadTwice()
    {
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.path() + "/ui/templates_a.ui", "<TEMPLATE a>\n"));
        QVERIFY(writeTestFile(dir.path() + "/ui/templates_b.ui", "<TEMPLATE b>\n"));
        clsKorviInterface doc;
        const SkinLoader::OpenedSkin opened = SkinLoader::openSkinFile(doc, dir.path() + "/ui/templates_b.ui");
        QCOMPARE(opened.filesRead.size(), 2);
        QCOMPARE(doc.Templates().Count(), 2);
        QVERIFY(doc.Templates().Find("a")->IsImported);
        QVERIFY(!doc.Templates().Find("b")->IsImported);
        QCOMPARE(opened.skinFormat, QString());
    }

    void aMissingSchemeIsPassedOverSilently()
    {
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.path() + "/ui/main.ui", "<LAYER L>\n</LAYER>\n"));
        QCOMPARE(SkinOpenPlan::mainSchemeFor(dir.path() + "/ui/main.ui"), QString());
        clsKorviInterface doc;
        QCOMPARE(SkinLoader::openSkinFile(doc, dir.path() + "/ui/main.ui").filesRead.size(), 1);
    }

    void aFileThatCannotBeReadRaisesAnError()
    {
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.path() + "/ui/templates_a.ui", "<TEMPLATE a>\n"));
        clsKorviInterface doc;
        QVERIFY_THROWS_EXCEPTION(SkinReadError, SkinLoader::openSkinFile(doc, dir.path() + "/ui/absent.ui"));
        // What was read before the error stays.
        QVERIFY(doc.Templates().Find("a"));
    }

    void aReadingErrorGoesToTheHandlerAndTheNextFileIsRead()
    {
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.path() + "/ui/templates_a.ui", "<TEMPLATE a>\n<TEXT orphan>\n"));
        QVERIFY(writeTestFile(dir.path() + "/ui/templates_b.ui", "<TEMPLATE b>\n"));
        QVERIFY(writeTestFile(dir.path() + "/ui/main.ui", "<LAYER ui_Main>\n</LAYER>\n"));
        clsKorviInterface doc;
        QStringList errors;
        const SkinLoader::OpenedSkin opened = SkinLoader::openSkinFile(
            doc, dir.path() + "/ui/main.ui",
            [&errors](const SkinReadError &error) { errors << QFileInfo(error.file()).fileName(); });
        QCOMPARE(errors, QStringList{ "templates_a.ui" });
        QVERIFY(doc.Templates().Find("a"));
        QVERIFY(doc.Templates().Find("b"));
        QVERIFY(doc.Layers().Find("ui_Main"));
        QCOMPARE(opened.filesRead.size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestSkinLoader)
#include "tst_skinloader.moc"
