// SPDX-License-Identifier: MIT
#include "ShownNode.h"
#include "EditorFixture.h"

#include "CanvasSize.h"
#include "RenderSetup.h"
#include "MovableShape.h"
#include "ObjectTreeModel.h"
#include "PowGrid.h"
#include "SkinCanvas.h"
#include "Splitter.h"
#include "StringInfoSink.h"
#include "ToolbarImages.h"
#include "clsComboList.h"
#include "frmAbout.h"
#include "frmSettings.h"

#include <QAction>
#include <QMenu>
#include <QPlainTextEdit>
#include <QToolBar>
#include <QTreeView>

namespace {

const QString kDemoMain = demoSkinMainFile();

// The layer drawn by a renderer of its own, for comparing with the canvas.
QImage referencePicture(const clsKorviInterface &doc, const SkinContext &context,
                        const clsElement *layer, const clsElement *highlighted = nullptr,
                        DrawnBox *box = nullptr)
{
    StringInfoSink sink;
    RenderSetup setup(doc, context, sink);
    setup.fonts.loadSkinFonts(context);
    LayerRenderer &renderer = setup.renderer;
    renderer.setHighlighted(highlighted);
    QImage picture(CanvasSize::forSkin(context, setup.cache), QImage::Format_RGB32);
    renderer.DrawLayer(layer, picture);
    if (box && highlighted)
        *box = renderer.boxOf(highlighted);
    return picture;
}

QStringList rowTexts(const PowGrid *grid, int column)
{
    QStringList texts;
    for (int row = 1; row <= grid->Items()->Count(); ++row)
        texts << grid->Items()->Item(row)->CellText(column);
    return texts;
}

QStringList choices(const PowGridItem *row)
{
    QStringList names;
    for (const ComboItem *item : *row->ComboList)
        names << item->strText;
    return names;
}

} // namespace

class TestEditor : public QObject
{
    Q_OBJECT

private slots:
    // ---- start-up ---------------------------------------------------------------

    void theToolbarHasItsEightButtonsInOrder()
    {
        EditorFixture f;
        // After the eight commands, past a separator, come Undo and Redo.
        const QList<QAction *> all = f.tlbMain()->actions();
        QCOMPARE(all.size(), 11);
        QVERIFY(all.at(8)->isSeparator());
        QCOMPARE(all.at(9)->objectName(), QStringLiteral("Undo"));
        QCOMPARE(all.at(10)->objectName(), QStringLiteral("Redo"));
        const QList<QAction *> buttons = all.mid(0, 8);
        QStringList keys, captions, tips;
        for (QAction *b : buttons) {
            keys << b->objectName();
            captions << b->text();
            tips << b->toolTip();
        }
        QCOMPARE(keys, (QStringList{ "Open", "Dir", "Save", "Lock", "Settings", "Prev", "Next", "About" }));
        QCOMPARE(captions, (QStringList{ "Open", "All", "Save", "Move", "Settings", "Prev", "Next", "About" }));
        QCOMPARE(tips, (QStringList{ "Open Template File", "Open All Template Directory", "Save Skin",
                                     "Lock move", "Edit General Settings", "Previous Layer", "Next Layer",
                                     "About" }));
        QVERIFY(f.window->button("Lock")->isCheckable());
        QVERIFY(!f.window->button("Open")->isCheckable());
        for (QAction *b : buttons)
            QVERIFY2(!b->icon().isNull(), qPrintable(b->objectName()));
    }

    void theWindowStartsEmptyWithSaveDisabled()
    {
        EditorFixture f;
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor"));
        QVERIFY(!f.window->button("Save")->isEnabled());
        QVERIFY(f.window->button("Open")->isEnabled());
        QCOMPARE(f.window->objectTree()->rowCount(), 0);
        QVERIFY(!f.pctTemplate()->hasPicture());
        QVERIFY(!f.mshObject()->isVisible());
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    void theControlsHaveTheirNames()
    {
        EditorFixture f;
        for (const char *name : { "tlbMain", "tvwObjects", "pctTemplate", "mshObject", "pgrProperty", "txtInfo",
                                  "stbMain", "splMain", "splInfo", "splProperty", "mnuProperty", "mnuLayer",
                                  "mnuElement", "mnuAddObject" }) {
            QVERIFY2(f.window->findChild<QObject *>(QString::fromLatin1(name)), name);
        }
        QVERIFY(f.mnuLayer()->findChild<QAction *>("mnuAddLayer"));
        QVERIFY(f.mnuLayer()->findChild<QAction *>("mnuRemoveLayer"));
        QVERIFY(f.mnuProperty()->findChild<QAction *>("mnuRemoveProperty"));
        QVERIFY(f.mnuElement()->findChild<QAction *>("mnuAddProperty"));
        QVERIFY(f.mnuElement()->findChild<QAction *>("mnuRemoveObject"));
        ToolbarImages images;
        QVERIFY(!images.image("LockOn").isNull());
        QVERIFY(!images.image("LockOff").isNull());
    }

    void thePropertyGridHasItsFiveColumns()
    {
        EditorFixture f;
        clsHeaders *headers = f.pgrProperty()->Headers();
        QCOMPARE(headers->Count(), 5);
        const QStringList captions = { "Property", "Value", "IDKey", "NodeKey", "..." };
        const QList<bool> visible = { true, true, false, false, true };
        const QList<int> types = { dtText, dtText, dtText, dtText, dtButton };
        for (int i = 1; i <= 5; ++i) {
            QCOMPARE(headers->Item(i)->Caption, captions.at(i - 1));
            QCOMPARE(headers->Item(i)->Visible, visible.at(i - 1));
            QCOMPARE(headers->Item(i)->ColumnDataType, types.at(i - 1));
        }
    }

    void theAddElementEntriesAreMadeAtStartUp()
    {
        EditorFixture f;
        QStringList captions;
        for (QAction *entry : f.mnuAddObject()->actions())
            captions << entry->text();
        QCOMPARE(captions.size(), 8);
        QCOMPARE(captions.mid(1), (QStringList{ "SPRITE", "BUTTON", "CHECKBOX", "SLIDER", "HSCROLLBAR", "LIST",
                                                "PUSHBUTTON" }));
        QCOMPARE(f.mnuAddObject()->actions().size(), 8);
    }

    // ---- Prev and Next ------------------------------------------------------------

    void clickingPrevOrNextChangesNothing()
    {
        EditorFixture f;
        f.window->openSkinFile(kDemoMain);
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnMap"));
        const QString title = f.title();
        const QImage picture = f.pctTemplate()->picture();
        const clsElement *current = f.window->shownNode().currentObject();
        const QModelIndex node = f.tvwObjects()->currentIndex();
        const QStringList rows = rowTexts(f.pgrProperty(), 0);
        const int layers = f.document.Layers().Count();
        f.window->button("Prev")->trigger();
        f.window->button("Next")->trigger();
        QCOMPARE(f.title(), title);
        QCOMPARE(f.pctTemplate()->picture(), picture);
        QCOMPARE(f.window->shownNode().currentObject(), current);
        QCOMPARE(f.tvwObjects()->currentIndex(), node);
        QCOMPARE(rowTexts(f.pgrProperty(), 0), rows);
        QCOMPARE(f.document.Layers().Count(), layers);
        QVERIFY(f.dialogs.asked().isEmpty());
    }

    // ---- Open ---------------------------------------------------------------------

    void openAsksForASkinFileAndACancelStops()
    {
        EditorFixture f;
        f.window->button("Open")->trigger();
        QCOMPARE(f.dialogs.asked().size(), 1);
        QCOMPARE(f.dialogs.asked().at(0).kind, QStringLiteral("open"));
        QCOMPARE(f.dialogs.asked().at(0).filter, QStringLiteral("User Interface File Korvi8|*.ui"));
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor"));
        QVERIFY(!f.window->button("Save")->isEnabled());
    }

    void openReadsTemplatesAndTheSchemeAsImportedThenTheFile()
    {
        EditorFixture f;
        SmallSkin skin;
        f.dialogs.answerPath(skin.mainFile());
        f.window->button("Open")->trigger();
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main_800_480.ui>"));
        QCOMPARE(f.context.UiFilePath, QFileInfo(skin.mainFile()).absoluteFilePath());
        QCOMPARE(f.context.SkinFormat, QStringLiteral("800_480"));
        QVERIFY(f.window->button("Save")->isEnabled());
        // Templates beside the file, then the scheme, then the file.
        QCOMPARE(f.document.Templates().Count(), 2);
        QCOMPARE(f.document.Templates().at(0)->strName(), QByteArray("tplShared"));
        QVERIFY(f.document.Templates().at(0)->IsImported);
        QCOMPARE(f.document.Templates().at(1)->strName(), QByteArray("tplOwn"));
        QVERIFY(!f.document.Templates().at(1)->IsImported);
        QCOMPARE(f.document.Fonts().at(0)->strName(), QByteArray("ftScheme"));
        QVERIFY(f.document.Fonts().at(0)->IsImported);
        // The common files are not part of an opened file.
        QVERIFY(!f.document.Layers().Find("ui_Common"));
        // The tree shows the skin's own entries only.
        ObjectTreeModel *tree = f.window->objectTree();
        QStringList top;
        for (int row = 0; row < tree->rowCount(); ++row)
            top << QString::fromLatin1(tree->nodeKey(tree->index(row, 0)));
        QCOMPARE(top, (QStringList{ "HEADERS", "TtplOwn", "Lui_Back", "Lui_Main", "Sst_Night" }));
    }

    void openingAFileNamedSkin_800_480SetsTheSkinFormat()
    {
        EditorFixture f;
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("skin_800_480.ui"), "<LAYER a>\r\n</LAYER>\r\n"));
        f.context.SkinFormat = QStringLiteral("480_272");
        f.window->openSkinFile(dir.filePath("skin_800_480.ui"));
        QCOMPARE(f.context.SkinFormat, QStringLiteral("800_480"));
    }

    void openingAFileNamedMainLeavesTheSkinFormat()
    {
        EditorFixture f;
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("main.ui"), "<LAYER a>\r\n</LAYER>\r\n"));
        f.context.SkinFormat = QStringLiteral("480_272");
        f.dialogs.answerPath(dir.filePath("main.ui"));
        f.window->button("Open")->trigger();
        QCOMPARE(f.context.SkinFormat, QStringLiteral("480_272"));
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main.ui>"));
    }

    void openingASecondFileDiscardsEverythingOfTheFirst()
    {
        EditorFixture f;
        f.window->openSkinFile(kDemoMain);
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnMap"));
        QVERIFY(f.pgrProperty()->Items()->Count() > 0);
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("second.ui"), "<LAYER only>\r\n</LAYER>\r\n"));
        f.dialogs.answerPath(dir.filePath("second.ui"));
        f.window->button("Open")->trigger();
        QCOMPARE(f.document.Layers().Count(), 1);
        QCOMPARE(f.document.Layers().at(0)->strName(), QByteArray("only"));
        QCOMPARE(f.document.Templates().Count(), 0);
        QCOMPARE(f.document.Fonts().Count(), 0);
        QCOMPARE(f.document.Headers().Count(), 0);
        QCOMPARE(f.window->objectTree()->rowCount(), 1);
        QCOMPARE(f.pgrProperty()->Items()->Count(), 0);
        // What is shown is the new file's first layer.
        QCOMPARE(f.window->shownNode().currentObject(), f.document.Layers().at(0));
        QCOMPARE(f.window->shownNode().shownLayer(), f.document.Layers().at(0));
        QVERIFY(!f.mshObject()->isVisible());
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <second.ui>"));
    }

    void anOpenedSkinShowsItsFirstLayerAtOnce()
    {
        EditorFixture f;
        SmallSkin skin;
        // The shared scheme read with the file has a layer of its own first.
        QVERIFY(writeTestFile(skin.root.path() + "/800_480/main_scheme.ui",
                              "<LAYER ui_Scheme>\r\n\t<TEXT txtS x=1 y=1 text=S>\r\n</LAYER>\r\n"));
        f.window->openSkinFile(skin.mainFile());
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Back"));
        QCOMPARE(f.window->shownNode().shownLayer(), f.document.Layers().Find("ui_Back"));
        QCOMPARE(f.tvwObjects()->currentIndex(), f.window->objectTree()->indexOfKey("Lui_Back"));
        QVERIFY(f.pctTemplate()->hasPicture());
        QCOMPARE(f.window->statusText(2), QStringLiteral("ui_Back"));
    }

    void aReadingErrorNamesTheFileAndLineAndKeepsWhatWasRead()
    {
        EditorFixture f;
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("broken.ui"), "<LAYER good>\r\n</LAYER>\r\n<TEXT orphan x=1>\r\n<LAYER after>\r\n"));
        f.window->openSkinFile(dir.filePath("broken.ui"));
        QCOMPARE(f.dialogs.asked().size(), 1);
        const ScriptedDialogs::Asked &message = f.dialogs.asked().at(0);
        QCOMPARE(message.kind, QStringLiteral("message"));
        QVERIFY2(message.text.contains(QStringLiteral("broken.ui")), qPrintable(message.text));
        QVERIFY2(message.text.contains(QStringLiteral("line 3")), qPrintable(message.text));
        QCOMPARE(f.document.Layers().Count(), 1);
        QCOMPARE(f.window->objectTree()->rowCount(), 1);
        QVERIFY(f.window->button("Save")->isEnabled());
        QVERIFY(!QApplication::overrideCursor());
    }

    void runningOutOfMemoryWhileReadingIsShownAndTheFileIsNotSavedOver()
    {
        EditorFixture f;
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("big.ui"), "<LAYER good>\r\n</LAYER>\r\n"));
        qputenv("KORVI_FAIL_MEMORY", "big.ui");
        f.window->openSkinFile(dir.filePath("big.ui"));
        qunsetenv("KORVI_FAIL_MEMORY");
        QCOMPARE(f.dialogs.asked().size(), 1);
        const QString text = f.dialogs.asked().at(0).text;
        QVERIFY2(text.contains(QStringLiteral("not enough memory to read ") + dir.filePath("big.ui") + QStringLiteral(" (1 MB)")),
                 qPrintable(text));
        QVERIFY(!QApplication::overrideCursor());
    }

    // ---- Dir ------------------------------------------------------------------------

    void dirAsksForAFolderAndACancelStops()
    {
        EditorFixture f;
        f.window->button("Dir")->trigger();
        QCOMPARE(f.dialogs.asked().size(), 1);
        QCOMPARE(f.dialogs.asked().at(0).kind, QStringLiteral("folder"));
        QCOMPARE(f.dialogs.asked().at(0).title, QStringLiteral("Select Skin ui Directory"));
        QVERIFY(!f.window->button("Save")->isEnabled());
    }

    void dirReadsTheFolderTheSchemeAndTheCommonFilesAllAsTheSkin()
    {
        EditorFixture f;
        SmallSkin skin;
        f.dialogs.answerPath(skin.uiFolder());
        f.window->button("Dir")->trigger();
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <") + skin.uiFolder() + ">");
        QVERIFY(f.window->button("Save")->isEnabled());
        QCOMPARE(f.context.SkinFormat, QStringLiteral("800_480"));
        // main_800_480.ui comes before templates_a.ui in name order.
        QCOMPARE(f.document.Templates().at(0)->strName(), QByteArray("tplOwn"));
        QCOMPARE(f.document.Templates().at(1)->strName(), QByteArray("tplShared"));
        for (const clsElement *tpl : f.document.Templates())
            QVERIFY(!tpl->IsImported);
        QCOMPARE(f.document.Fonts().at(1)->strName(), QByteArray("ftScheme"));
        QVERIFY(!f.document.Fonts().at(1)->IsImported);
        // The common files come last.
        QCOMPARE(f.document.Layers().at(f.document.Layers().Count() - 1)->strName(), QByteArray("ui_Common"));
        QVERIFY(f.window->objectTree()->indexOfKey("TtplShared").isValid());
    }

    void dirReadsFilesInNameOrderWithCaseIgnored()
    {
        EditorFixture f;
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("b.ui"), "<LAYER b>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("C.UI"), "<LAYER c>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("A.ui"), "<LAYER a>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("notes.txt"), "<LAYER no>\r\n</LAYER>\r\n"));
        f.window->openSkinFolder(dir.path());
        QStringList names;
        for (const clsElement *layer : f.document.Layers())
            names << QString::fromLatin1(layer->strName());
        QCOMPARE(names, (QStringList{ "a", "b", "c" }));
    }

    void dirTakesTheFormatOfTheLastMatchingFile()
    {
        EditorFixture f;
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("a_480_272.ui"), "<LAYER a>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("b_800_480.ui"), "<LAYER b>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("c.ui"), "<LAYER c>\r\n</LAYER>\r\n"));
        f.window->openSkinFolder(dir.path());
        QCOMPARE(f.context.SkinFormat, QStringLiteral("800_480"));
    }

    // ---- Save -----------------------------------------------------------------------

    void saveOntoAnExistingFileAsksFirstAndNoLeavesFileAndTitle()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        const QString target = skin.root.filePath("existing.ui");
        QVERIFY(writeTestFile(target, "old content"));
        const QString title = f.title();
        f.dialogs.answerPath(target);
        f.dialogs.answerButton(Dialogs::Button::No);
        f.window->button("Save")->trigger();
        QCOMPARE(f.dialogs.asked().size(), 2);
        QCOMPARE(f.dialogs.asked().at(0).kind, QStringLiteral("save"));
        QCOMPARE(f.dialogs.asked().at(0).filter, QStringLiteral("User Interface File Korvi8|*.ui"));
        const ScriptedDialogs::Asked &question = f.dialogs.asked().at(1);
        QCOMPARE(question.title, QStringLiteral("Save File"));
        QCOMPARE(question.text, QStringLiteral("File already exists, do you want to overwrite?"));
        QCOMPARE(question.icon, Dialogs::Icon::Question);
        QCOMPARE(question.buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(readTestFile(target), QByteArray("old content"));
        QVERIFY(!QFile::exists(skin.root.filePath("existing.bak")));
        QCOMPARE(f.title(), title);
    }

    void saveOntoAnExistingFileAnsweredYesWritesItWithABackup()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        const QString target = skin.root.filePath("existing.ui");
        QVERIFY(writeTestFile(target, "old content"));
        f.dialogs.answerPath(target);
        f.dialogs.answerButton(Dialogs::Button::Yes);
        f.window->button("Save")->trigger();
        QCOMPARE(readTestFile(skin.root.filePath("existing.bak")), QByteArray("old content"));
        QVERIFY(readTestFile(target).startsWith("<header>"));
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("Saving complete"));
        QCOMPARE(f.dialogs.asked().last().title, QStringLiteral("Save File"));
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <existing.ui>"));
        QVERIFY(!QApplication::overrideCursor());
    }

    void saveOffersTheOpenedFile()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->button("Save")->trigger();
        QCOMPARE(f.dialogs.asked().size(), 1);
        QCOMPARE(f.dialogs.asked().at(0).value, f.context.UiFilePath);
        // Cancelled: nothing else happens.
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main_800_480.ui>"));
    }

    void saveToANewFileAsksNoQuestion()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        const QString target = skin.root.filePath("new.ui");
        f.dialogs.answerPath(target);
        f.window->button("Save")->trigger();
        QCOMPARE(f.dialogs.asked().size(), 2);
        QCOMPARE(f.dialogs.asked().at(1).text, QStringLiteral("Saving complete"));
        QVERIFY(QFile::exists(target));
        // Imported templates are not written; the skin's own are.
        const QByteArray written = readTestFile(target);
        QVERIFY(written.contains("tplOwn"));
        QVERIFY(!written.contains("tplShared>"));
    }

    void aFailedSaveIsReportedAndNotAnnounced()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.dialogs.answerPath(skin.root.filePath("no-such-folder/new.ui"));
        f.window->button("Save")->trigger();
        QCOMPARE(f.dialogs.asked().size(), 2);
        QVERIFY(f.dialogs.asked().at(1).text.startsWith(QStringLiteral("Error saving file: ")));
        QCOMPARE(f.dialogs.asked().at(1).icon, Dialogs::Icon::Warning);
        QVERIFY(!QApplication::overrideCursor());
    }

    // ---- selection ----------------------------------------------------------------------

    void clickingALayerDrawsItAndShowsItsName()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main"));
        const clsElement *layer = f.document.Layers().Find("ui_Main");
        QCOMPARE(f.window->shownNode().currentObject(), layer);
        QCOMPARE(f.window->shownNode().shownLayer(), layer);
        QCOMPARE(f.pctTemplate()->picture(), referencePicture(f.document, f.context, layer));
        QCOMPARE(f.pctTemplate()->picture().size(), QSize(800, 480));
        QCOMPARE(f.window->statusText(1), QStringLiteral("LAYER:ui_Main"));
        QCOMPARE(f.window->statusText(2), QStringLiteral("ui_Main"));
        QVERIFY(!f.mshObject()->isVisible());
        QCOMPARE(f.pgrProperty()->Items()->Count(), 0);
    }

    void clickingAUsedLayerDrawsTheLayerItUses()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|Uui_Back"));
        const clsElement *used = f.document.Layers().Find("ui_Back");
        QCOMPARE(f.window->shownNode().shownLayer(), used);
        QCOMPARE(f.pctTemplate()->picture(), referencePicture(f.document, f.context, used));
        QCOMPARE(f.window->statusText(2), QStringLiteral("ui_Back"));
        QCOMPARE(rowTexts(f.pgrProperty(), 0), QStringList{ "z" });
    }

    void clickingAStateDrawsTheState()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Sst_Night"));
        const clsElement *state = f.document.Layers().Find("st_Night");
        QCOMPARE(f.window->shownNode().shownLayer(), state);
        QCOMPARE(f.pctTemplate()->picture(), referencePicture(f.document, f.context, state));
        QCOMPARE(f.window->statusText(2), QStringLiteral("st_Night"));
    }

    void clickingATemplateDrawsItAloneOverTheBackground()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("TtplOwn"));
        clsElement *tpl = f.document.Templates().Find("tplOwn");
        QCOMPARE(f.window->shownNode().currentObject(), tpl);
        StringInfoSink sink;
        RenderSetup setup(f.document, f.context, sink);
        LayerRenderer &renderer = setup.renderer;
        QImage expected(800, 480, QImage::Format_RGB32);
        renderer.DrawLayer(nullptr, expected);
        renderer.DrawElement(tpl, expected, 0, 0, false);
        QCOMPARE(f.pctTemplate()->picture(), expected);
        QVERIFY(f.pctTemplate()->picture() != referencePicture(f.document, f.context, nullptr));
        QCOMPARE(rowTexts(f.pgrProperty(), 0), (QStringList{ "x", "y", "w", "h", "text" }));
        QVERIFY(!f.mshObject()->isVisible());
    }

    void clickingAnObjectHighlightsItOverItsLayerWithTheFrame()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->resize(1300, 860);
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EtxtTitle"));
        clsElement *text = f.document.Layers().Find("ui_Main")->SubElements().Find("txtTitle");
        QCOMPARE(f.window->shownNode().currentObject(), text);
        QCOMPARE(f.window->shownNode().shownLayer(), f.document.Layers().Find("ui_Main"));
        DrawnBox box;
        const QImage expected = referencePicture(f.document, f.context, f.window->shownNode().shownLayer(), text, &box);
        QCOMPARE(f.pctTemplate()->picture(), expected);
        QVERIFY(expected != referencePicture(f.document, f.context, f.window->shownNode().shownLayer()));
        QVERIFY(f.mshObject()->isVisible());
        const int handle = f.mshObject()->handleSize();
        // A text without a picture is framed where its text was printed.
        const QRect shown = box.shownRect();
        QCOMPARE(f.mshObject()->geometry(),
                 QRect(shown.left() - handle, shown.top() - handle, shown.width() + 2 * handle,
                       shown.height() + 2 * handle));
        QCOMPARE(f.mshObject()->parentWidget(), f.pctTemplate());
        QCOMPARE(f.window->statusText(1), QStringLiteral("TEXT:txtTitle"));
        QCOMPARE(f.window->statusText(2), QStringLiteral("ui_Main"));
    }

    void theGridRowsFollowThePropertyNames()
    {
        EditorFixture f;
        SmallSkin skin;
        f.hideInheritedValues();
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EtxtTitle"));
        PowGrid *grid = f.pgrProperty();
        QCOMPARE(rowTexts(grid, 0), (QStringList{ "x", "y", "w", "h", "text", "template", "fonttype", "color",
                                                  "visible" }));
        QCOMPARE(rowTexts(grid, 1), (QStringList{ "100", "50", "200", "30", "Title", "tplShared", "ftOwn",
                                                  "#00FF00", "" }));
        QCOMPARE(rowTexts(grid, 2), (QStringList{ "x", "y", "w", "h", "text", "template", "fonttype", "color",
                                                  "visible" }));
        QCOMPARE(grid->Items()->Item(1)->CellText(3), QStringLiteral("Lui_Main|EtxtTitle|Px"));
        QCOMPARE(grid->Items()->Item(9)->CellText(3), QStringLiteral("Lui_Main|EtxtTitle|Pvisible"));
        QCOMPARE(rowTexts(grid, 4), (QStringList{ "", "", "", "", "", "", "", "...", "" }));
        const QList<int> types = { dtNumber, dtNumber, dtNumber, dtNumber, dtNone, dtItemCombo, dtItemCombo,
                                   dtNone, dtNone };
        for (int row = 1; row <= 9; ++row)
            QCOMPARE(grid->Items()->Item(row)->DataType, types.at(row - 1));
        // Templates and font types of the whole document, in document order.
        QCOMPARE(choices(grid->Items()->Item(6)), (QStringList{ "tplShared", "tplOwn" }));
        QCOMPARE(choices(grid->Items()->Item(7)), (QStringList{ "ftScheme", "ftOwn" }));
        // The names keep showing as names, the buttons as buttons.
        QCOMPARE(grid->DisplayText(grid->Items()->Item(6), 0), QStringLiteral("template"));
        QCOMPARE(grid->DisplayText(grid->Items()->Item(6), 1), QStringLiteral("tplShared"));
        QCOMPARE(grid->CellDataType(grid->Items()->Item(1), 4), int(dtButton));
        QCOMPARE(grid->CellDataType(grid->Items()->Item(1), 1), int(dtNumber));
    }

    void clickingAnObjectOfAnotherLayerShowsThatLayerFirst()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Sst_Night"));
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnOk"));
        QCOMPARE(f.window->shownNode().shownLayer(), f.document.Layers().Find("ui_Main"));
        QCOMPARE(f.window->statusText(2), QStringLiteral("ui_Main"));
        QCOMPARE(f.window->shownNode().currentObject()->strName(), QByteArray("btnOk"));
    }

    void clickingAPropertyShowsItsOwner()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnOk|Pbmp"));
        QCOMPARE(f.window->shownNode().currentObject()->strName(), QByteArray("btnOk"));
        QCOMPARE(f.window->shownNode().currentNodeKey(), QByteArray("Lui_Main|EbtnOk"));
        QCOMPARE(rowTexts(f.pgrProperty(), 0), (QStringList{ "x", "y", "w", "h", "bmp" }));
        QCOMPARE(f.pgrProperty()->Items()->Item(5)->CellText(4), QStringLiteral("..."));
    }

    void clickingTheHeadersNodeClearsTheCanvasAndStatus()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EtxtTitle"));
        QVERIFY(f.pctTemplate()->hasPicture());
        f.window->selectNode(f.window->objectTree()->indexOfKey("HEADERS"));
        QVERIFY(!f.pctTemplate()->hasPicture());
        QVERIFY(f.window->shownNode().picture().isNull());
        QCOMPARE(f.window->statusText(1), QString());
        QCOMPARE(f.window->statusText(2), QString());
        QVERIFY(!f.mshObject()->isVisible());
        QVERIFY(!f.window->shownNode().currentObject());
    }

    void clickingAHeaderVariableListsItsValues()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        const QModelIndex headers = f.window->objectTree()->indexOfKey("HEADERS");
        f.window->selectNode(f.window->objectTree()->index(0, 0, headers));
        QCOMPARE(f.window->shownNode().currentObject(), f.document.Headers().at(0));
        QVERIFY(!f.pctTemplate()->hasPicture());
        QCOMPARE(rowTexts(f.pgrProperty(), 0), QStringList{ "skin_name" });
    }

    void lockHidesTheFrameAndReleasingShowsItAgain()
    {
        EditorFixture f;
        SmallSkin skin;
        f.hideInheritedValues();
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnOk"));
        QVERIFY(f.mshObject()->isVisible());
        const QIcon released = f.window->button("Lock")->icon();
        f.window->button("Lock")->trigger();
        QVERIFY(f.window->button("Lock")->isChecked());
        QVERIFY(!f.mshObject()->isVisible());
        QVERIFY(f.window->button("Lock")->icon().cacheKey() != released.cacheKey());
        // Still selectable, without a frame.
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EtxtTitle"));
        QVERIFY(!f.mshObject()->isVisible());
        QCOMPARE(f.pgrProperty()->Items()->Count(), 9);
        f.window->button("Lock")->trigger();
        QVERIFY(f.mshObject()->isVisible());
    }

    void missingPicturesAreListedInTheInformationBox()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main"));
        const QString info = f.txtInfo()->toPlainText();
        QVERIFY2(info.contains(QStringLiteral("Unable to locate missing.bmp")), qPrintable(info));
    }

    void theInformationBoxListsWhatEachDrawingMisses()
    {
        EditorFixture f;
        QTemporaryDir folder;
        const QString file = folder.path() + "/800_480/ui/fonts_800_480.ui";
        QVERIFY(writeTestFile(file, "<LAYER ui_A>\r\n"
                                    "\t<TEXT txtOne x=1 y=1 text=One font=NoSuchFontOne>\r\n"
                                    "\t<TEXT txtTwo x=1 y=40 text=Two font=NoSuchFontTwo>\r\n"
                                    "\t<BUTTON btnGone x=100 y=100 bmp=gone.bmp>\r\n"
                                    "</LAYER>\r\n"
                                    "<LAYER ui_B>\r\n"
                                    "\t<TEXT txtThree x=1 y=1 text=Three font=NoSuchFontThree>\r\n"
                                    "</LAYER>\r\n"));
        f.window->openSkinFile(file);
        const auto info = [&f] { return f.txtInfo()->toPlainText(); };
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_A"));
        // Every missing font of the drawing, and its missing picture.
        QVERIFY2(info().contains(QStringLiteral("Font NoSuchFontOne not found")), qPrintable(info()));
        QVERIFY(info().contains(QStringLiteral("Font NoSuchFontTwo not found")));
        QVERIFY(info().contains(QStringLiteral("gone.bmp")));
        QVERIFY(!info().contains(QStringLiteral("NoSuchFontThree")));
        // Another layer: its own lines only.
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_B"));
        QVERIFY2(info().contains(QStringLiteral("Font NoSuchFontThree not found")), qPrintable(info()));
        QVERIFY(!info().contains(QStringLiteral("NoSuchFontOne")));
        QVERIFY(!info().contains(QStringLiteral("gone.bmp")));
        // The first layer again lists again what it misses, once each.
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_A"));
        QCOMPARE(info().count(QStringLiteral("Font NoSuchFontOne not found")), 1);
        QCOMPARE(info().count(QStringLiteral("Font NoSuchFontTwo not found")), 1);
        QVERIFY(!info().contains(QStringLiteral("NoSuchFontThree")));
    }

    void aSplitterDragDrawsTheCanvasAgainAndPlacesTheFrame()
    {
        EditorFixture f;
        SmallSkin skin;
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        f.window->openSkinFile(skin.mainFile());
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnOk"));
        f.pctTemplate()->clearPicture();
        f.mshObject()->hide();
        emit f.splInfo()->EndResize();
        QVERIFY(f.pctTemplate()->hasPicture());
        QVERIFY(f.mshObject()->isVisible());
        f.pctTemplate()->clearPicture();
        emit f.splMain()->EndResize();
        QVERIFY(f.pctTemplate()->hasPicture());
    }

    void theDemoSkinsFirstLayerCanBeShown()
    {
        EditorFixture f;
        f.window->openSkinFile(kDemoMain);
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main"));
        const QImage picture = f.pctTemplate()->picture();
        QCOMPARE(picture, referencePicture(f.document, f.context, f.document.Layers().Find("ui_Main")));
        // The demo skin's background is a picture, not the cleared canvas.
        QVERIFY(picture.pixel(400, 300) != qRgb(0, 0, 0));
    }

    // ---- Settings and About ----------------------------------------------------------

    void settingsAndAboutShowTheirForms()
    {
        EditorFixture f;
        f.window->button("Settings")->trigger();
        f.window->button("About")->trigger();
        QStringList shown;
        for (const ScriptedDialogs::Asked &asked : f.dialogs.asked()) {
            if (asked.kind == QLatin1String("form"))
                shown << asked.title;
        }
        QCOMPARE(shown, (QStringList{ "frmSettings", "frmAbout" }));
    }
};

QTEST_MAIN(TestEditor)
#include "tst_editor.moc"
