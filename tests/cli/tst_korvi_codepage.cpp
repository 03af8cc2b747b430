// SPDX-License-Identifier: MIT
// korvi reads a skin's text in the code page --code-page names, on every
// subcommand that reads a skin: render, lint, set, unset, remove, locate, dump
// and port. The name is an IANA one or a common alias, in any case.
#include "../ProgramRun.h"
#include "TestFiles.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

namespace {

ProgramRun korvi(const QStringList &args)
{
    return runProgram(QStringLiteral(KORVI_EXECUTABLE), args);
}

// "Настройки" and "Громкость" in Windows-1251.
const QByteArray kSettings1251 = "\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8";
const QByteArray kVolume1251 = "\xc3\xf0\xee\xec\xea\xee\xf1\xf2\xfc";

const QByteArray kCyrillicSkin = "<LAYER ui_Main>\r\n"
                                 "\t<TEXT txtTitle x=10 y=20 w=300 h=40 text=\"" + kSettings1251 + "\" font=Verdana>\r\n"
                                 "\t<TEXT txtVolume x=10 y=80 w=300 h=40 text=\"" + kVolume1251 + "\">\r\n"
                                 "</LAYER>\r\n";

// A skin folder laid out as a real one, its main file holding `bytes`.
struct SkinFolder
{
    QTemporaryDir root;
    QByteArray bytes;
    QString mainFile() const { return root.path() + QStringLiteral("/800_480/ui/main_800_480.ui"); }
    explicit SkinFolder(const QByteArray &content)
        : bytes(content)
    {
        QVERIFY(writeTestFile(mainFile(), bytes));
    }
    bool untouched() const
    {
        return readTestFile(mainFile()) == bytes
            && !QFile::exists(root.path() + QStringLiteral("/800_480/ui/main_800_480.bak"));
    }
};

// What korvi prints is in the terminal's encoding.
QByteArray terminal(const QString &text)
{
    return text.toLocal8Bit();
}

} // namespace

class TestKorviCodePage : public QObject
{
    Q_OBJECT

private slots:
    // The terminal's text is stored in the code page named, whatever its
    // spelling.
    void setStoresTheTextInTheNamedCodePage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("windows-1251") << QStringLiteral("windows-1251") << QStringLiteral("Ж") << QByteArray("\xc6");
        QTest::newRow("CP1251") << QStringLiteral("CP1251") << QStringLiteral("Ж") << QByteArray("\xc6");
        QTest::newRow("Windows-1250") << QStringLiteral("Windows-1250") << QStringLiteral("dźwięk")
                                      << QByteArray("d\x9fwi\xeak");
        QTest::newRow("cp1250") << QStringLiteral("cp1250") << QStringLiteral("ł") << QByteArray("\xb3");
        QTest::newRow("WINDOWS-1253") << QStringLiteral("WINDOWS-1253") << QStringLiteral("Ωα") << QByteArray("\xd9\xe1");
        QTest::newRow("cp1253") << QStringLiteral("cp1253") << QStringLiteral("ή") << QByteArray("\xde");
        QTest::newRow("koi8-r") << QStringLiteral("koi8-r") << QStringLiteral("Жж") << QByteArray("\xf6\xd6");
        QTest::newRow("KOI8-U") << QStringLiteral("KOI8-U") << QStringLiteral("ї") << QByteArray("\xa7");
        QTest::newRow("ibm866") << QStringLiteral("ibm866") << QStringLiteral("Жж") << QByteArray("\x86\xa6");
        QTest::newRow("cp866") << QStringLiteral("cp866") << QStringLiteral("Ж") << QByteArray("\x86");
        QTest::newRow("iso-8859-5") << QStringLiteral("ISO-8859-5") << QStringLiteral("Ж") << QByteArray("\xb6");
        QTest::newRow("iso-8859-7") << QStringLiteral("iso-8859-7") << QStringLiteral("Ω") << QByteArray("\xd9");
        QTest::newRow("utf-8") << QStringLiteral("UTF-8") << QStringLiteral("Ж") << QByteArray("\xd0\x96");
    }
    void setStoresTheTextInTheNamedCodePage()
    {
        QFETCH(QString, name);
        QFETCH(QString, typed);
        QFETCH(QByteArray, stored);
        SkinFolder skin("<LAYER ui_Main>\r\n\t<TEXT txtTitle x=1 y=2 text=Title>\r\n</LAYER>\r\n");
        const ProgramRun run = korvi({ QStringLiteral("set"), QStringLiteral("--code-page"), name, skin.mainFile(),
                                       QStringLiteral("Lui_Main|EtxtTitle"), QStringLiteral("text=") + typed });
        QVERIFY2(run.exitCode == 0, run.err.constData());
        QByteArray expected = skin.bytes;
        expected.replace("text=Title", "text=\"" + stored + "\"");
        QCOMPARE(readTestFile(skin.mainFile()), expected);
    }

    // The checker's messages quote the skin's text decoded, in the terminal's
    // encoding.
    void lintQuotesTheTextInTheNamedCodePage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("IANA") << QStringLiteral("windows-1251");
        QTest::newRow("upper case") << QStringLiteral("WINDOWS-1251");
        QTest::newRow("alias") << QStringLiteral("Cp1251");
        QTest::newRow("number") << QStringLiteral("1251");
    }
    void lintQuotesTheTextInTheNamedCodePage()
    {
        QFETCH(QString, name);
        SkinFolder skin("<LAYER ui_Main>\r\n\t<TEXT txtTitle x=10 y=20 text=" + kSettings1251 + " iconphase=2>\r\n</LAYER>\r\n");
        const ProgramRun run = korvi({ QStringLiteral("lint"), QStringLiteral("--code-page"), name, skin.mainFile() });
        QVERIFY2(run.out.contains(terminal(QStringLiteral("text=Настройки reads as text=iconphase"))), run.out.constData());
        QVERIFY2(run.out.contains(terminal(QStringLiteral("write text=\"Настройки\" [unquoted-text]"))), run.out.constData());
        // Western European reads the same bytes as other letters.
        const ProgramRun western = korvi({ QStringLiteral("lint"), QStringLiteral("--code-page"),
                                           QStringLiteral("windows-1252"), skin.mainFile() });
        QVERIFY2(western.out.contains(terminal(QStringLiteral("write text=\"Íàñòðîéêè\""))), western.out.constData());
        QVERIFY(skin.untouched());
    }

    // The same words drawn from a Windows-1253 skin and from a UTF-8 one make
    // the same picture (the same PNG file); read as Western European they make
    // another.
    void renderDrawsTheTextOfTheNamedCodePage()
    {
        const QString words = QStringLiteral("Ρυθμίσεις ήχου");
        auto skinOf = [](const QByteArray &text) {
            return "<LAYER ui_Main>\r\n\t<TEXT txtTitle x=10 y=20 w=400 h=40 text=\"" + text
                + "\" font=Verdana fontsize=14>\r\n</LAYER>\r\n";
        };
        SkinFolder greek(skinOf("\xd1\xf5\xe8\xec\xdf\xf3\xe5\xe9\xf2 \xde\xf7\xef\xf5"));
        SkinFolder unicode(skinOf(words.toUtf8()));
        auto render = [](const SkinFolder &skin, const QString &page) {
            const QString out = skin.root.filePath(QStringLiteral("drawn.png"));
            const ProgramRun run = korvi({ QStringLiteral("render"), skin.mainFile(), QStringLiteral("--layer"),
                                           QStringLiteral("ui_Main"), QStringLiteral("--code-page"), page,
                                           QStringLiteral("-o"), out });
            return run.exitCode == 0 ? readTestFile(out) : QByteArray();
        };
        const QByteArray fromGreek = render(greek, QStringLiteral("CP1253"));
        const QByteArray fromUnicode = render(unicode, QStringLiteral("utf8"));
        const QByteArray fromWestern = render(greek, QStringLiteral("windows-1252"));
        QVERIFY(fromGreek.startsWith("\x89PNG"));
        QVERIFY(fromWestern.startsWith("\x89PNG"));
        QCOMPARE(fromGreek, fromUnicode);
        QVERIFY(fromGreek != fromWestern);
        QVERIFY(greek.untouched());
    }

    // A picture's name in the lookup's report is the name the code page reads.
    void locateReportsTheNameInTheNamedCodePage()
    {
        SkinFolder skin("<LAYER ui_Main>\r\n</LAYER>\r\n");
        const ProgramRun run = korvi({ QStringLiteral("locate"), QStringLiteral("--ui"), skin.mainFile(),
                                       QStringLiteral("--code-page"), QStringLiteral("x-cp1251"),
                                       QStringLiteral("карта.bmp") });
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.out.contains(terminal(QStringLiteral("Unable to locate карта.bmp in "))), run.out.constData());
    }

    // unset and remove change only what they name; every other byte, the
    // skin's text among them, stays as it was.
    void unsetKeepsTheOtherTextAsItsBytes()
    {
        SkinFolder skin(kCyrillicSkin);
        const ProgramRun run = korvi({ QStringLiteral("unset"), QStringLiteral("--code-page"), QStringLiteral("Windows-1251"),
                                       skin.mainFile(), QStringLiteral("Lui_Main|EtxtTitle"), QStringLiteral("font") });
        QVERIFY2(run.exitCode == 0, run.err.constData());
        QByteArray expected = kCyrillicSkin;
        expected.replace(" font=Verdana", "");
        QCOMPARE(readTestFile(skin.mainFile()), expected);
    }

    void removeKeepsTheOtherTextAsItsBytes()
    {
        SkinFolder skin(kCyrillicSkin);
        const ProgramRun run = korvi({ QStringLiteral("remove"), QStringLiteral("--code-page"), QStringLiteral("IBM866"),
                                       skin.mainFile(), QStringLiteral("Lui_Main|EtxtVolume") });
        QVERIFY2(run.exitCode == 0, run.err.constData());
        QByteArray expected = kCyrillicSkin;
        expected.replace("\t<TEXT txtVolume x=10 y=80 w=300 h=40 text=\"" + kVolume1251 + "\">\r\n", "");
        QCOMPARE(readTestFile(skin.mainFile()), expected);
    }

    // The name typed is looked up as it stands in a skin of that code page.
    void locateFindsAPictureNamedInTheCodePage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("koi8-r") << QStringLiteral("KOI8-R");
        QTest::newRow("cp1251") << QStringLiteral("cp1251");
        QTest::newRow("utf-8") << QStringLiteral("utf-8");
    }
    void locateFindsAPictureNamedInTheCodePage()
    {
        QFETCH(QString, name);
        SkinFolder skin("<LAYER ui_Main>\r\n</LAYER>\r\n");
        const QString picture = skin.root.path() + QStringLiteral("/800_480/карта.bmp");
        QVERIFY(QFile::copy(QStringLiteral(KORVI_SOURCE_DIR "/tests/data/pictures/text.bmp"), picture));
        const ProgramRun run = korvi({ QStringLiteral("locate"), QStringLiteral("--ui"), skin.mainFile(),
                                       QStringLiteral("--code-page"), name, QStringLiteral("карта.bmp") });
        QVERIFY2(run.exitCode == 0, run.err.constData() + run.out);
        // Exit 0: found. The path is printed in the terminal's encoding.
        const QByteArray pathLine = run.out.split('\n').first();
        QVERIFY2(pathLine.startsWith("path: ") && pathLine.endsWith(terminal(QStringLiteral("карта.bmp"))),
                 run.out.constData());
        QVERIFY2(!run.out.contains("Unable to locate"), run.out.constData());
    }

    void locateRefusesANameTheCodePageCannotHold()
    {
        SkinFolder skin("<LAYER ui_Main>\r\n</LAYER>\r\n");
        const ProgramRun run = korvi({ QStringLiteral("locate"), QStringLiteral("--ui"), skin.mainFile(),
                                       QStringLiteral("--code-page"), QStringLiteral("windows-1252"),
                                       QStringLiteral("карта.bmp") });
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.err, terminal(QStringLiteral("korvi locate: \u201cк\u201d cannot be written in Windows-1252, "
                                                  "the code page of this skin\n")));
    }

    void dumpDecodesInTheNamedCodePage()
    {
        SkinFolder skin(kCyrillicSkin);
        const ProgramRun exact = korvi({ QStringLiteral("dump"), skin.mainFile() });
        QCOMPARE(exact.exitCode, 0);
        QVERIFY(exact.out.contains("\\u00cd\\u00e0"));
        const ProgramRun decoded = korvi({ QStringLiteral("dump"), QStringLiteral("--code-page"), QStringLiteral("WINDOWS-1251"),
                                           skin.mainFile() });
        QCOMPARE(decoded.exitCode, 0);
        QVERIFY2(decoded.out.contains("\\u041d\\u0430\\u0441"), decoded.out.constData());
    }

    // The port's report quotes the values it kept as the code page reads them.
    void portQuotesKeptValuesInTheNamedCodePage()
    {
        SkinFolder skin("<LAYER ui_Main>\r\n\t<TEXT txtTitle x=\"\xc6\" y=20>\r\n</LAYER>\r\n");
        const QString json = skin.root.filePath(QStringLiteral("report.json"));
        const ProgramRun run = korvi({ QStringLiteral("port"), skin.root.path(), QStringLiteral("--from"),
                                       QStringLiteral("800_480"), QStringLiteral("--to"), QStringLiteral("1024_600"),
                                       QStringLiteral("--dry-run"), QStringLiteral("--code-page"), QStringLiteral("CP1251"),
                                       QStringLiteral("--report"), json });
        QVERIFY2(run.exitCode == 0, run.err.constData());
        QVERIFY2(run.out.contains(terminal(QStringLiteral("Lui_Main|EtxtTitle x=\"Ж\": not a plain number"))),
                 run.out.constData());
        QVERIFY2(readTestFile(json).contains("\"value\": \"\\\"\xd0\x96\\\"\""), readTestFile(json).constData());
        QVERIFY(skin.untouched());
        QVERIFY(!QFile::exists(skin.root.path() + QStringLiteral("/1024_600")));
    }

    // The Cyrillic demo skin is clean in its code page, and drawn with a font
    // that has its letters.
    void theCyrillicDemoSkinReadsCleanAndDrawsItsLetters()
    {
        const QString skin = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin-cyrillic");
        const QString main = skin + QStringLiteral("/800_480/ui/main_800_480.ui");
        const ProgramRun lint = korvi({ QStringLiteral("lint"), QStringLiteral("--code-page"), QStringLiteral("windows-1251"),
                                        QStringLiteral("--skin-dir"), skin, skin + QStringLiteral("/800_480/ui") });
        QCOMPARE(lint.exitCode, 0);
        QVERIFY2(lint.out.endsWith("0 errors and 0 warnings\n"), lint.out.constData());
        const ProgramRun dump = korvi({ QStringLiteral("dump"), QStringLiteral("--code-page"), QStringLiteral("cp1251"), main });
        QCOMPARE(dump.exitCode, 0);
        // "Главное меню", in JSON's escapes.
        QVERIFY2(dump.out.contains("\\u0413\\u043b\\u0430\\u0432\\u043d\\u043e\\u0435 \\u043c\\u0435\\u043d\\u044e"),
                 dump.out.constData());
        QTemporaryDir out;
        const ProgramRun render = korvi({ QStringLiteral("render"), main, QStringLiteral("--skin-dir"), skin,
                                          QStringLiteral("--code-page"), QStringLiteral("cp1251"), QStringLiteral("--all-layers"),
                                          QStringLiteral("-o"), out.path() });
        QVERIFY2(render.exitCode == 0, render.err.constData());
        QVERIFY2(!render.err.contains("letters"), render.err.constData());
    }

    // A name that is no code page stops every command before it reads or
    // writes anything.
    void aNameThatIsNoCodePageIsAUsageErrorEverywhere_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("render") << QStringList { QStringLiteral("render"), QStringLiteral("MAIN"), QStringLiteral("--layer"),
                                                 QStringLiteral("ui_Main"), QStringLiteral("-o"), QStringLiteral("OUT") };
        QTest::newRow("lint") << QStringList { QStringLiteral("lint"), QStringLiteral("MAIN") };
        QTest::newRow("set") << QStringList { QStringLiteral("set"), QStringLiteral("MAIN"), QStringLiteral("Lui_Main|EtxtTitle"),
                                              QStringLiteral("x=5") };
        QTest::newRow("unset") << QStringList { QStringLiteral("unset"), QStringLiteral("MAIN"),
                                                QStringLiteral("Lui_Main|EtxtTitle"), QStringLiteral("font") };
        QTest::newRow("remove") << QStringList { QStringLiteral("remove"), QStringLiteral("MAIN"),
                                                 QStringLiteral("Lui_Main|EtxtTitle") };
        QTest::newRow("locate") << QStringList { QStringLiteral("locate"), QStringLiteral("--ui"), QStringLiteral("MAIN"),
                                                 QStringLiteral("a.bmp") };
        QTest::newRow("dump") << QStringList { QStringLiteral("dump"), QStringLiteral("MAIN") };
        QTest::newRow("port") << QStringList { QStringLiteral("port"), QStringLiteral("ROOT"), QStringLiteral("--from"),
                                               QStringLiteral("800_480"), QStringLiteral("--to"), QStringLiteral("1024_600") };
    }
    void aNameThatIsNoCodePageIsAUsageErrorEverywhere()
    {
        QFETCH(QStringList, arguments);
        SkinFolder skin(kCyrillicSkin);
        const QString out = skin.root.filePath(QStringLiteral("drawn.png"));
        arguments.replaceInStrings(QStringLiteral("MAIN"), skin.mainFile());
        arguments.replaceInStrings(QStringLiteral("OUT"), out);
        arguments.replaceInStrings(QStringLiteral("ROOT"), skin.root.path());
        arguments << QStringLiteral("--code-page") << QStringLiteral("cyrillic-ish");
        const ProgramRun run = korvi(arguments);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.startsWith(terminal(QStringLiteral("korvi: \u201ccyrillic-ish\u201d is no code page"))),
                 run.err.constData());
        QVERIFY2(run.err.contains("windows-1251"), run.err.constData());
        QVERIFY(run.out.isEmpty());
        QVERIFY(skin.untouched());
        QVERIFY(!QFile::exists(out));
        QVERIFY(!QFile::exists(skin.root.path() + QStringLiteral("/1024_600")));
    }

    // Every subcommand that reads a skin says so in its help.
    void helpNamesTheOption_data()
    {
        QTest::addColumn<QString>("command");
        for (const char *command : { "render", "lint", "set", "unset", "remove", "locate", "dump", "port" })
            QTest::newRow(command) << QString::fromLatin1(command);
    }
    void helpNamesTheOption()
    {
        QFETCH(QString, command);
        const ProgramRun run = korvi({ command, QStringLiteral("--help") });
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains("--code-page NAME"), run.out.constData());
    }
};

QTEST_GUILESS_MAIN(TestKorviCodePage)
#include "tst_korvi_codepage.moc"
