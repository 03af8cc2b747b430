// SPDX-License-Identifier: MIT
#include "TestFiles.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// korvi set, unset and remove edit a skin file in place the way Save Changes
// does: only the changed parts of the file are rewritten.
namespace {

struct Run
{
    int exitCode = -1;
    QByteArray err;
};

Run korvi(const QStringList &args)
{
    QProcess p;
    p.start(QStringLiteral(KORVI_EXECUTABLE), args);
    p.waitForFinished(60000);
    return { p.exitCode(), p.readAllStandardError() };
}

const QByteArray kSkin = "<LAYER ui_Main x=0>\r\n"
                         "\t<BUTTON btnMap x=70  y=80 text=Map visible>\r\n"
                         "\t<USELAYER ui_Status/>\r\n"
                         "</LAYER>\r\n";

// A skin file in a folder of its own.
struct Skin
{
    QTemporaryDir dir;
    QString path;
    QDateTime stamp;

    explicit Skin(const QByteArray &bytes = kSkin)
    {
        path = dir.filePath(QStringLiteral("main.ui"));
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        f.close();
        stamp = QFileInfo(path).lastModified();
        QTest::qWait(20);
    }
    bool untouched() const
    {
        return readTestFile(path) == kSkin && QFileInfo(path).lastModified() == stamp
            && !QFile::exists(dir.filePath(QStringLiteral("main.bak")));
    }
};

} // namespace

class TestKorviEdit : public QObject
{
    Q_OBJECT

private slots:
    void setChangesOneValueInPlace()
    {
        Skin skin;
        const Run run = korvi({ "set", skin.path, "Lui_Main|EbtnMap", "X=75" });
        QCOMPARE(run.exitCode, 0);
        QByteArray expected = kSkin;
        expected.replace("x=70", "x=75");
        QCOMPARE(readTestFile(skin.path), expected);
        QCOMPARE(readTestFile(skin.dir.filePath("main.bak")), kSkin);
    }

    void setAddsAMissingKeyAtTheEndAndQuotesWhatNeedsIt()
    {
        Skin skin;
        QCOMPARE(korvi({ "set", skin.path, "Lui_Main|EbtnMap", "caption=Go home now", "z=3" }).exitCode, 0);
        QByteArray expected = kSkin;
        expected.replace("text=Map visible>", "text=Map visible caption=\"Go home now\" z=3>");
        QCOMPARE(readTestFile(skin.path), expected);
    }

    void setOfAUsedLayerAddsBeforeTheSlash()
    {
        Skin skin;
        QCOMPARE(korvi({ "set", skin.path, "Lui_Main|Uui_Status", "z=5" }).exitCode, 0);
        QByteArray expected = kSkin;
        expected.replace("<USELAYER ui_Status/>", "<USELAYER ui_Status z=5 />");
        QCOMPARE(readTestFile(skin.path), expected);
    }

    void setToWhatItAlreadyIsLeavesTheFileUnwritten()
    {
        Skin skin;
        QCOMPARE(korvi({ "set", skin.path, "Lui_Main|EbtnMap", "x=70" }).exitCode, 0);
        QVERIFY(skin.untouched());
    }

    void setWritesToOutAndLeavesTheFileAlone()
    {
        Skin skin;
        const QString out = skin.dir.filePath("out.ui");
        QCOMPARE(korvi({ "set", skin.path, "Lui_Main", "x=5", "-o", out }).exitCode, 0);
        QVERIFY(skin.untouched());
        QByteArray expected = kSkin;
        expected.replace("<LAYER ui_Main x=0>", "<LAYER ui_Main x=5>");
        QCOMPARE(readTestFile(out), expected);
    }

    void valueWithNoSpellingFailsAndLeavesTheFile()
    {
        Skin skin;
        const Run run = korvi({ "set", skin.path, "Lui_Main|EbtnMap", "text=say \"hi\" it's" });
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains("cannot be stored"), run.err.constData());
        QVERIFY(skin.untouched());
    }

    // The terminal's text (UTF-8 here) is stored in the skin's code page.
    void setStoresTheTerminalsTextInTheSkinsCodePage()
    {
        Skin skin;
        const Run run = korvi({ "set", "--code-page", "WINDOWS-1251", skin.path, "Lui_Main|EbtnMap",
                                QString::fromUtf8("text=\xd0\x9a\xd0\xb0\xd1\x80\xd1\x82\xd0\xb0") });
        QCOMPARE(run.exitCode, 0);
        QByteArray expected = kSkin;
        expected.replace("text=Map", "text=\"\xca\xe0\xf0\xf2\xe0\"");
        QCOMPARE(readTestFile(skin.path), expected);
    }

    void setOfACharacterTheCodePageLacksFailsAndLeavesTheFile()
    {
        Skin skin;
        const Run run = korvi({ "set", "--code-page", "cp1252", skin.path, "Lui_Main|EbtnMap",
                                QString::fromUtf8("text=\xd0\x96") });
        QCOMPARE(run.exitCode, 1);
        // Printed in the terminal's encoding: on Windows the system's code
        // page, where a character it lacks shows as "?".
        QCOMPARE(run.err,
                 QString::fromUtf8("korvi set: \xe2\x80\x9c\xd0\x96\xe2\x80\x9d cannot be written in Windows-1252, "
                                   "the code page of this skin\n")
                     .toLocal8Bit());
        QVERIFY(skin.untouched());
    }

    void aNameThatIsNoCodePageIsAUsageError()
    {
        Skin skin;
        const Run run = korvi({ "set", "--code-page", "cyrillic-ish", skin.path, "Lui_Main|EbtnMap", "x=1" });
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains("is no code page"), run.err.constData());
        QVERIFY(skin.untouched());
    }

    void aKeyWithOtherLettersIsRefusedWithTheReason()
    {
        Skin skin;
        const Run run = korvi({ "set", skin.path, "Lui_Main|EbtnMap", QString::fromUtf8("\xd1\x82=1") });
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains("is not an ASCII letter"), run.err.constData());
        QVERIFY(skin.untouched());
    }

    void nodeKeyThatNamesNoElementFails()
    {
        Skin skin;
        const Run run = korvi({ "set", skin.path, "Lui_Main|EbtnNone", "x=1" });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains("names no element"));
        QVERIFY(skin.untouched());
    }

    void fileWithAReadingErrorIsNotEdited()
    {
        const QByteArray broken = "<TEXT orphan x=1>\r\n";
        Skin skin(broken);
        const Run run = korvi({ "set", skin.path, "Lui_Main", "x=1" });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains("main.ui"));
        QCOMPARE(readTestFile(skin.path), broken);
        QCOMPARE(QFileInfo(skin.path).lastModified(), skin.stamp);
    }

    void usageErrorsExitTwo()
    {
        Skin skin;
        QCOMPARE(korvi({ "set", skin.path, "Lui_Main" }).exitCode, 2);
        QCOMPARE(korvi({ "set", skin.path, "Lui_Main", "novalue" }).exitCode, 2);
        QCOMPARE(korvi({ "unset", skin.path }).exitCode, 2);
        QCOMPARE(korvi({ "remove", skin.path, "Lui_Main", "extra" }).exitCode, 2);
        QCOMPARE(korvi({ "remove", skin.path, "Lui_Main", "--bogus" }).exitCode, 2);
        QVERIFY(skin.untouched());
    }

    void unsetRemovesPropertiesWithOneBlankEach()
    {
        Skin skin;
        QCOMPARE(korvi({ "unset", skin.path, "Lui_Main|EbtnMap", "visible", "text" }).exitCode, 0);
        QByteArray expected = kSkin;
        expected.replace(" text=Map visible>", ">");
        QCOMPARE(readTestFile(skin.path), expected);
    }

    void unsetOfAMissingKeyFailsAndLeavesTheFile()
    {
        Skin skin;
        const Run run = korvi({ "unset", skin.path, "Lui_Main|EbtnMap", "text", "nothere" });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains("nothere"));
        QVERIFY(skin.untouched());
    }

    void removeTakesTheElementsLines()
    {
        Skin skin;
        QCOMPARE(korvi({ "remove", skin.path, "Lui_Main|Uui_Status" }).exitCode, 0);
        QByteArray expected = kSkin;
        expected.replace("\t<USELAYER ui_Status/>\r\n", "");
        QCOMPARE(readTestFile(skin.path), expected);
        QCOMPARE(korvi({ "remove", skin.path, "Lui_Main" }).exitCode, 0);
        QCOMPARE(readTestFile(skin.path), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestKorviEdit)
#include "tst_korvi_edit.moc"
