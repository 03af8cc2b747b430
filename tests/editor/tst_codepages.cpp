// SPDX-License-Identifier: MIT
// Skins in their own code page in the window: the tree and the grid show the
// words, typed text is stored in the code page or refused, Save Changes writes
// only the value typed, and a skin whose bytes look like another code page is
// offered it once.
#include "CodePageChoice.h"
#include "FontMeasure.h"
#include "EditorFixture.h"
#include "EditorSettings.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "RenderSetup.h"
#include "StringInfoSink.h"
#include "clsPowGridItems.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QUndoStack>

namespace {

// A skin of one layer and one text, written in `page`.
struct CodePageSkin
{
    QTemporaryDir root;
    QByteArray bytes;
    QString mainFile() const { return root.path() + "/800_480/ui/main_800_480.ui"; }
    explicit CodePageSkin(const QByteArray &text)
    {
        bytes = "<LAYER ui_Main>\r\n\t<TEXT txtTitle x=10 y=20 w=300 h=40 text=" + text + " font=Verdana>\r\n"
                "\t<TEXT txtOther x=10 y=80 w=300 h=40 text=Other>\r\n</LAYER>\r\n";
        QVERIFY(writeTestFile(mainFile(), bytes));
    }
};

// A copy of one of the skins of tests/data/codepages, each written in the code
// page its folder is named after, so that opening it leaves the source alone.
struct StoredSkin
{
    QTemporaryDir root;
    QString mainFile() const { return root.path() + "/800_480/ui/main_800_480.ui"; }
    explicit StoredSkin(const QString &page)
    {
        const QByteArray bytes = readTestFile(QStringLiteral(KORVI_SOURCE_DIR "/tests/data/codepages/") + page
                                              + QStringLiteral("/800_480/ui/main_800_480.ui"));
        QVERIFY(!bytes.isEmpty());
        QVERIFY(writeTestFile(mainFile(), bytes));
    }
};

struct CodePageFixture : EditorFixture
{
    CodePageChoice *choice() const { return control<CodePageChoice>("CodePageChoice"); }
    QString nodeText(const QByteArray &key) { return tree().nodeText(node(key)); }
    PowGridItem *gridRow(const QString &name)
    {
        clsPowGridItems *items = pgrProperty()->Items();
        for (int i = 1; i <= items->Count(); ++i) {
            if (items->Item(i)->CellText(PropertyGridFiller::ColProperty) == name)
                return items->Item(i);
        }
        return nullptr;
    }
    void chooseFor(const CodePageSkin &skin, const QString &name)
    {
        EditorSettings(settings).setCodePageFor(CodePageChoice::skinFolderOf(skin.mainFile()), name);
    }
    // Types into the grid's value cell of `name` on the selected object.
    void typeInGrid(const QString &name, const QString &typed)
    {
        PowGridItem *row = gridRow(name);
        QVERIFY(row);
        row->setCellText(PropertyGridFiller::ColValue, typed);
        emit pgrProperty()->ItemChanged(row, PropertyGridFiller::ColValue);
    }
    ScriptedDialogs::Asked lastAsked() const
    {
        return dialogs.asked().isEmpty() ? ScriptedDialogs::Asked() : dialogs.asked().last();
    }
};

} // namespace

class TestCodePages : public QObject
{
    Q_OBJECT

private slots:
    void treeAndGridShowTheWordsOfTheSkinsCodePage_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("Cyrillic") << QStringLiteral("windows-1251")
                                  << QByteArray("\"\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8\"") << QStringLiteral("\"Настройки\"");
        QTest::newRow("Central European") << QStringLiteral("windows-1250")
                                          << QByteArray("\"Ustawienia d\x9fwi\xeaku\"")
                                          << QStringLiteral("\"Ustawienia dźwięku\"");
        QTest::newRow("Greek") << QStringLiteral("windows-1253")
                               << QByteArray("\"\xd1\xf5\xe8\xec\xdf\xf3\xe5\xe9\xf2\"") << QStringLiteral("\"Ρυθμίσεις\"");
    }
    void treeAndGridShowTheWordsOfTheSkinsCodePage()
    {
        QFETCH(QString, page);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        CodePageSkin skin(bytes);
        CodePageFixture f;
        f.chooseFor(skin, page);
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.document.codec().name(), page);
        QCOMPARE(f.nodeText("Lui_Main|EtxtTitle|Ptext"), QStringLiteral("text=") + text);
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        QVERIFY(f.gridRow(QStringLiteral("text")));
        QCOMPARE(f.gridRow(QStringLiteral("text"))->CellText(PropertyGridFiller::ColValue), text);
        // The menu shows the skin's code page, and a folder with a choice gets no offer.
        QVERIFY(f.control<QAction>(qPrintable(QStringLiteral("mnuCodePage_") + page))->isChecked());
        QCOMPARE(f.choice()->offerText(), QString());
    }

    // Skins as their makers wrote them, opened from disk in the code page
    // chosen for their folder: the tree and the grid show their words, and the
    // canvas draws them as the same words drawn from text would look.
    void storedSkinsShowAndDrawTheirWords_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("volume");
        QTest::newRow("Central European") << QStringLiteral("windows-1250") << QStringLiteral("Ustawienia dźwięku")
                                          << QStringLiteral("Příliš žluťoučký kůň");
        QTest::newRow("Cyrillic") << QStringLiteral("windows-1251") << QStringLiteral("Настройки звука")
                                  << QStringLiteral("Громкость: 65 %");
        QTest::newRow("Greek") << QStringLiteral("windows-1253") << QStringLiteral("Ρυθμίσεις ήχου")
                               << QStringLiteral("Ένταση: 65 %");
    }
    void storedSkinsShowAndDrawTheirWords()
    {
        QFETCH(QString, page);
        QFETCH(QString, title);
        QFETCH(QString, volume);
        StoredSkin skin(page);
        const QByteArray bytesBefore = readTestFile(skin.mainFile());
        CodePageFixture f;
        EditorSettings(f.settings).setCodePageFor(CodePageChoice::skinFolderOf(skin.mainFile()), page);
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.document.codec().name(), page);
        const QString quotedTitle = QLatin1Char('"') + title + QLatin1Char('"');
        const QString quotedVolume = QLatin1Char('"') + volume + QLatin1Char('"');
        QCOMPARE(f.nodeText("Lui_Main|EtxtTitle|Ptext"), QStringLiteral("text=") + quotedTitle);
        QCOMPARE(f.nodeText("Lui_Main|EtxtVolume|Ptext"), QStringLiteral("text=") + quotedVolume);
        f.window->selectNode(f.node("Lui_Main|EtxtVolume"));
        QVERIFY(f.gridRow(QStringLiteral("text")));
        QCOMPARE(f.gridRow(QStringLiteral("text"))->CellText(PropertyGridFiller::ColValue), quotedVolume);

        // The empty layer gives the background; the words go on it as text,
        // in the font the skin's "Verdana" stands for on this system.
        f.window->selectNode(f.node("Lui_Blank"));
        QImage expected = f.pctTemplate()->picture();
        QVERIFY(!expected.isNull());
        f.window->selectNode(f.node("Lui_Main"));
        const QImage drawn = f.pctTemplate()->picture();
        StringInfoSink sink;
        RenderSetup setup(f.document, f.context, sink);
        setup.fonts.loadSkinFonts(f.context);
        // fontsize=12 draws in 11 points, the size a line is written in.
        const QFont font = FontMeasure::fontFor(setup.fonts.resolveFamily(QStringLiteral("Verdana")), false, 11);
        {
            QPainter painter(&expected);
            painter.setFont(font);
            painter.setPen(QColor(Qt::black));
            const int ascent = QFontMetrics(font).ascent();
            painter.drawText(QPoint(10, 20 + ascent), quotedTitle);
            painter.drawText(QPoint(10, 80 + ascent), quotedVolume);
        }
        QCOMPARE(drawn, expected);
        QCOMPARE(readTestFile(skin.mainFile()), bytesBefore);
    }

    void aLetterTheCodePageLacksIsRefusedAndNothingChanges()
    {
        CodePageSkin skin("Title");
        CodePageFixture f;
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.document.codec().name(), QStringLiteral("windows-1252"));
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        f.typeInGrid(QStringLiteral("text"), QStringLiteral("Жук"));
        QCOMPARE(f.lastAsked().text,
                 QStringLiteral("\u201cЖ\u201d cannot be written in Windows-1252, the code page of this skin"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("Title"));
        QCOMPARE(f.stack().count(), 0);
        QCOMPARE(f.gridRow(QStringLiteral("text"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("Title"));
    }

    // Stored as its byte, in quotes since the reader's letters are ASCII only,
    // and saved as exactly those bytes in place of the old value.
    void aLetterOfTheCodePageIsStoredAsItsByteAndSavedAlone()
    {
        CodePageSkin skin("Title");
        CodePageFixture f;
        f.window->show();
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.chooseFor(skin, QStringLiteral("cp1251"));
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        f.typeInGrid(QStringLiteral("text"), QStringLiteral("Ж"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("\"\xc6\""));
        QCOMPARE(f.nodeText("Lui_Main|EtxtTitle|Ptext"), QStringLiteral("text=\"Ж\""));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        QTest::keyClick(f.window.get(), Qt::Key_S, Qt::ControlModifier);
        QByteArray expected = skin.bytes;
        expected.replace("text=Title", "text=\"\xc6\"");
        QCOMPARE(readTestFile(skin.mainFile()), expected);
    }

    void aNameWithOtherLettersIsRefusedWithTheReason()
    {
        CodePageSkin skin("Title");
        CodePageFixture f;
        f.window->show();
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.node("Lui_Main"));
        f.dialogs.answerText(QStringLiteral("ui_Карта"));
        f.actions()->AddLayer();
        QCOMPARE(f.lastAsked().text,
                 QStringLiteral("\u201cui_Карта\u201d cannot be a name: \u201cК\u201d is not an ASCII letter, and a name is "
                                "written with the letters A-Z and a-z, digits, _ and / only"));
        QCOMPARE(f.stack().count(), 0);
    }

    void aSkinReadInTheWrongCodePageIsOfferedTheRightOneOnce()
    {
        CodePageSkin skin("\"\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8 \xe7\xe2\xf3\xea\xe0\"");
        CodePageFixture f;
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.choice()->offerText(),
                 QStringLiteral("This skin's text looks like Windows-1251 (Cyrillic): use it?"));
        // Nothing changes without a yes.
        QCOMPARE(f.document.codec().name(), QStringLiteral("windows-1252"));
        f.control<QPushButton>("codePageOfferUse")->click();
        QCOMPARE(f.document.codec().name(), QStringLiteral("windows-1251"));
        QCOMPARE(f.nodeText("Lui_Main|EtxtTitle|Ptext"), QStringLiteral("text=\"Настройки звука\""));
        QCOMPARE(f.choice()->offerText(), QString());
        // Kept for the folder; no byte of the file changed.
        QCOMPARE(EditorSettings(f.settings).codePageFor(CodePageChoice::skinFolderOf(skin.mainFile())),
                 QStringLiteral("windows-1251"));
        QCOMPARE(readTestFile(skin.mainFile()), skin.bytes);
        QCOMPARE(f.stack().count(), 0);
    }

    void aDeclinedOfferIsNotMadeAgainInTheSameRun()
    {
        CodePageSkin skin("\"\xcd\xe0\xf1\xf2\xf0\xee\xe9\xea\xe8\"");
        CodePageFixture f;
        f.window->openSkinFile(skin.mainFile());
        QVERIFY(!f.choice()->offerText().isEmpty());
        f.control<QPushButton>("codePageOfferNo")->click();
        QCOMPARE(f.document.codec().name(), QStringLiteral("windows-1252"));
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.choice()->offerText(), QString());
    }

    void aUtf8SkinIsOfferedUtf8()
    {
        CodePageSkin skin(QStringLiteral("\"Настройки\"").toUtf8());
        CodePageFixture f;
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.choice()->offerText(), QStringLiteral("This skin's text looks like UTF-8 (Unicode): use it?"));
    }

    void anAsciiSkinIsOfferedNothing()
    {
        CodePageSkin skin("\"Main menu\"");
        CodePageFixture f;
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.choice()->offerText(), QString());
    }

    // The menu's choice changes what is shown, and no byte.
    void choosingACodePageChangesTheTextShownOnly()
    {
        CodePageSkin skin("\"\xd1\xf5\xe8\xec\xdf\xf3\xe5\xe9\xf2\"");
        CodePageFixture f;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        f.control<QAction>("mnuCodePage_windows-1253")->trigger();
        QCOMPARE(f.nodeText("Lui_Main|EtxtTitle|Ptext"), QStringLiteral("text=\"Ρυθμίσεις\""));
        QCOMPARE(f.gridRow(QStringLiteral("text"))->CellText(PropertyGridFiller::ColValue),
                 QStringLiteral("\"Ρυθμίσεις\""));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("\"\xd1\xf5\xe8\xec\xdf\xf3\xe5\xe9\xf2\""));
        QCOMPARE(readTestFile(skin.mainFile()), skin.bytes);
        QCOMPARE(f.stack().count(), 0);
    }

    void theSkinFolderIsTheOneAboveTheResolutionFolder()
    {
        const QString root = QDir::cleanPath(QDir::tempPath());
        QCOMPARE(CodePageChoice::skinFolderOf(root + QStringLiteral("/skins/ru/800_480/ui/main_800_480.ui")),
                 root + QStringLiteral("/skins/ru"));
        QCOMPARE(CodePageChoice::skinFolderOf(root + QStringLiteral("/skins/ru/800_480/main_scheme.ui")),
                 root + QStringLiteral("/skins/ru"));
        QCOMPARE(CodePageChoice::skinFolderOf(root + QStringLiteral("/loose/main.ui")), root + QStringLiteral("/loose"));
    }
};

QTEST_MAIN(TestCodePages)
#include "tst_codepages.moc"
