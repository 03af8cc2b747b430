// SPDX-License-Identifier: MIT
// Saving changes in place from the window: File > Save Changes and Ctrl+S,
// the list of files shown before writing, a file changed on disk, a new layer
// of a whole folder, the count of unsaved changes, Save As after a reading
// error or a whole folder, and what typed values and names become.

#include "ShownNode.h"
#include "EditorFixture.h"

#include "LayerRenderer.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "SaveChangesFlow.h"
#include "SkinDocument.h"
#include "clsPowGridItems.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QUndoStack>

namespace {

struct SaveFixture : EditorFixture
{
    SmallSkin skin;
    QByteArray mainBefore;
    QByteArray templatesBefore;

    SaveFixture()
    {
        mainBefore = readTestFile(skin.mainFile());
        templatesBefore = readTestFile(templatesFile());
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    QString templatesFile() const { return skin.uiFolder() + "/templates_a.ui"; }


    // The value prompt behind a double click on a property node, answered.
    void typeValue(const QByteArray &propertyKey, const QString &typed)
    {
        dialogs.answerText(typed);
        const QPoint at = tvwObjects()->visualRect(node(propertyKey)).center();
        QTest::mouseClick(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }

    // A shortcut reaches a window only while it is the active one, and a
    // window that another test shows on the same display (tests run two at a
    // time) may have just taken that place: the window is made active first.
    void pressCtrl(Qt::Key key)
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.get(), key, Qt::ControlModifier);
    }

    ScriptedDialogs::Asked lastAsked() const
    {
        return dialogs.asked().isEmpty() ? ScriptedDialogs::Asked() : dialogs.asked().last();
    }

    QList<ScriptedDialogs::Asked> askedOfKind(const QString &kind) const
    {
        QList<ScriptedDialogs::Asked> found;
        for (const ScriptedDialogs::Asked &asked : dialogs.asked()) {
            if (asked.kind == kind)
                found << asked;
        }
        return found;
    }

    QLabel *changesPanel() const { return control<QLabel>("stbChanges"); }
    QAction *fileEntry(const char *name) const { return control<QAction>(name); }

    PowGridItem *gridRow(const QString &name)
    {
        clsPowGridItems *items = pgrProperty()->Items();
        for (int i = 1; i <= items->Count(); ++i) {
            if (items->Item(i)->CellText(PropertyGridFiller::ColProperty) == name)
                return items->Item(i);
        }
        return nullptr;
    }
};

QByteArray replaced(QByteArray bytes, const QByteArray &from, const QByteArray &to)
{
    return bytes.replace(from, to);
}

} // namespace

class TestFileMenu : public QObject
{
    Q_OBJECT

private slots:
    // ---- Save Changes --------------------------------------------------------------------------

    void ctrlSWritesOnlyTheChangedValueAfterShowingTheFile()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("7"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);

        const auto asked = f.lastAsked();
        QCOMPARE(asked.kind, QStringLiteral("message"));
        QCOMPARE(asked.title, QStringLiteral("Save Changes"));
        QCOMPARE(asked.buttons, Dialogs::Buttons::OkCancel);
        QVERIFY(asked.text.contains(QFileInfo(f.skin.mainFile()).fileName() + QStringLiteral(" (1 change)")));
        QVERIFY(!asked.text.contains(QStringLiteral("templates_a.ui")));
        QVERIFY(f.askedOfKind(QStringLiteral("save")).isEmpty());
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(f.mainBefore, "txtTitle x=100", "txtTitle x=7"));
        QCOMPARE(readTestFile(f.templatesFile()), f.templatesBefore);
        QVERIFY(f.stack().isClean());
    }

    void theFileMenuEntrySavesTheSameWay()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EbtnOk|Py", QStringLiteral("210"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.fileEntry("mnuSaveChanges")->trigger();
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(f.mainBefore, "y=200", "y=210"));
        // Listing the files to write and writing them found the changes once.
        QCOMPARE(f.window->findChild<SaveChangesFlow *>()->lastFinderRuns(), 1);
    }

    void cancellingTheListOfFilesWritesNothing()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        f.dialogs.answerButton(Dialogs::Button::Cancel);
        f.pressCtrl(Qt::Key_S);
        QCOMPARE(f.lastAsked().title, QStringLiteral("Save Changes"));
        QCOMPARE(readTestFile(f.skin.mainFile()), f.mainBefore);
        QVERIFY(!f.stack().isClean());
    }

    void saveChangesIsOfferedOnceASkinIsOpen()
    {
        SaveFixture f;
        QVERIFY(!f.fileEntry("mnuSaveChanges")->isEnabled());
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(f.fileEntry("mnuSaveChanges")->isEnabled());
    }

    void aFileChangedOnDiskIsAskedAboutAndCancelWritesNothing()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        // Someone else changed the same line meanwhile.
        const QByteArray theirs = replaced(f.mainBefore, "txtTitle x=100", "txtTitle x=999");
        QVERIFY(writeTestFile(f.skin.mainFile(), theirs));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.dialogs.answerButton(Dialogs::Button::Cancel);
        f.pressCtrl(Qt::Key_S);

        const auto asked = f.lastAsked();
        QCOMPARE(asked.text, QStringLiteral("main_800_480.ui changed on disk since it was opened. "
                                            "Overwrite it with your version?"));
        QCOMPARE(asked.buttons, Dialogs::Buttons::OverwriteCancel);
        QCOMPARE(readTestFile(f.skin.mainFile()), theirs);
        QVERIFY(!f.stack().isClean());
    }

    void aFileChangedOnDiskIsOverwrittenWhenTheUserSaysSo()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        QVERIFY(writeTestFile(f.skin.mainFile(), replaced(f.mainBefore, "txtTitle x=100", "txtTitle x=999")));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.dialogs.answerButton(Dialogs::Button::Overwrite);
        f.pressCtrl(Qt::Key_S);
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(f.mainBefore, "txtTitle x=100", "txtTitle x=7"));
        QVERIFY(f.stack().isClean());
    }

    void aSaveMergedWithAChangeOnDiskShowsTheFileAsItNowIs()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        // Another program moves a text of another layer meanwhile; the user keeps editing.
        const QByteArray onDisk = replaced(f.mainBefore, "txtBack x=10 y=10", "txtBack x=10 y=33");
        QVERIFY(writeTestFile(f.skin.mainFile(), onDisk));
        f.window->selectNode(f.node("Lui_Back|EtxtBack"));
        QCOMPARE(f.value("Lui_Back|EtxtBack|Py"), QByteArray("10"));
        const QRect before = f.mshObject()->geometry();
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        // Both changes are in the file; only the list of files was asked about.
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(onDisk, "txtTitle x=100", "txtTitle x=7"));
        QCOMPARE(f.askedOfKind(QStringLiteral("message")).size(), 1);
        // The editor shows both at once: tree, grid and canvas, on the same object.
        QCOMPARE(f.value("Lui_Back|EtxtBack|Py"), QByteArray("33"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("7"));
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Back|EtxtBack"));
        QCOMPARE(f.gridRow(QStringLiteral("y"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("33"));
        QCOMPARE(f.mshObject()->geometry().top(), before.top() + 23);
        QVERIFY(f.window->statusBar()->currentMessage().contains(QStringLiteral("read again")));
        QVERIFY(f.stack().isClean());
    }

    void aRefusedSaveNamesTheElementAndWhyAndOffersSaveAs()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        // Typed values are always stored so that they read back; a value set
        // from elsewhere may not be: a picture name
        // with a blank and no quotes would be read as two attributes.
        f.tree().ResolveNodeKey("Lui_Main|EbtnOk").element->Properties().setValue("bmp", "my picture.bmp");
        const QString copy = f.skin.uiFolder() + "/main_copy.ui";
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.dialogs.answerButton(Dialogs::Button::Yes);
        f.dialogs.answerPath(copy);
        f.pressCtrl(Qt::Key_S);
        const auto messages = f.askedOfKind(QStringLiteral("message"));
        QVERIFY(messages.size() >= 2);
        const QString refusal = messages.at(1).text;
        QVERIFY2(refusal.contains(QStringLiteral("BUTTON btnOk: the value my picture.bmp of bmp does not read back as it is")),
                 qPrintable(refusal));
        QVERIFY(refusal.contains(QStringLiteral("Nothing was written")));
        QVERIFY(refusal.contains(QStringLiteral("Save As")));
        QCOMPARE(messages.at(1).buttons, Dialogs::Buttons::YesNo);
        // Nothing was written to the file; Yes went on to Save As.
        QCOMPARE(readTestFile(f.skin.mainFile()), f.mainBefore);
        QCOMPARE(f.askedOfKind(QStringLiteral("save")).size(), 1);
        QVERIFY(QFileInfo::exists(copy));
    }

    void aNewLayerAfterAllGoesIntoTheFileTheUserChooses()
    {
        SaveFixture f;
        f.window->openSkinFolder(f.skin.uiFolder());
        f.dialogs.answerText(QStringLiteral("ui_New"));
        f.actions()->AddLayer();
        QVERIFY(f.tree().indexOfKey("Lui_New").isValid());
        f.dialogs.answerChoice(f.skin.mainFile());
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);

        const auto choices = f.askedOfKind(QStringLiteral("choice"));
        QCOMPARE(choices.size(), 1);
        bool offered = false;
        for (const QString &choice : choices.first().choices)
            offered = offered || QFileInfo(choice) == QFileInfo(f.skin.mainFile());
        QVERIFY(offered);
        const QByteArray saved = readTestFile(f.skin.mainFile());
        QVERIFY(saved.startsWith(f.mainBefore));
        QVERIFY(saved.mid(f.mainBefore.size()).contains("<LAYER ui_New"));
        QCOMPARE(readTestFile(f.templatesFile()), f.templatesBefore);
    }

    void afterAllNoFileIsAskedForWithoutANewLayer()
    {
        SaveFixture f;
        f.window->openSkinFolder(f.skin.uiFolder());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QVERIFY(f.askedOfKind(QStringLiteral("choice")).isEmpty());
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(f.mainBefore, "txtTitle x=100", "txtTitle x=7"));
    }

    void cancellingTheChoiceOfFileWritesNothing()
    {
        SaveFixture f;
        f.window->openSkinFolder(f.skin.uiFolder());
        f.dialogs.answerText(QStringLiteral("ui_New"));
        f.actions()->AddLayer();
        f.pressCtrl(Qt::Key_S);
        QCOMPARE(f.lastAsked().kind, QStringLiteral("choice"));
        QCOMPARE(readTestFile(f.skin.mainFile()), f.mainBefore);
    }

    void theStatusBarCountsUnsavedChangesAndFiles()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        QCOMPARE(f.changesPanel()->text(), QString());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        QTRY_COMPARE(f.changesPanel()->text(), QStringLiteral("1 change in 1 file"));
        f.typeValue("Lui_Main|EbtnOk|Py", QStringLiteral("210"));
        QTRY_COMPARE(f.changesPanel()->text(), QStringLiteral("2 changes in 1 file"));
        f.stack().undo();
        f.stack().undo();
        QTRY_COMPARE(f.changesPanel()->text(), QString());
        f.stack().redo();
        QTRY_COMPARE(f.changesPanel()->text(), QStringLiteral("1 change in 1 file"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QCOMPARE(f.changesPanel()->text(), QString());
    }

    void aDragIsOneChange()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        QVERIFY(f.mshObject()->isVisible());
        f.dragFrame(12, 8);
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("112"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Py"), QByteArray("58"));
        QTRY_COMPARE(f.changesPanel()->text(), QStringLiteral("1 change in 1 file"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QVERIFY(f.lastAsked().text.contains(QStringLiteral("main_800_480.ui (1 change)")));
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(f.mainBefore, "txtTitle x=100 y=50", "txtTitle x=112 y=58"));
    }

    // ---- Save As ---------------------------------------------------------------------------------

    void saveAsAfterAReadingErrorAsksFirstAndNoWritesNothing()
    {
        SaveFixture f;
        const QString file = f.skin.uiFolder() + "/broken_800_480.ui";
        const QByteArray broken = "<LAYER ui_A>\r\n</LAYER>\r\n<TEXT stray x=1>\r\n<LAYER ui_B>\r\n</LAYER>\r\n";
        QVERIFY(writeTestFile(file, broken));
        f.window->openSkinFile(file);
        f.dialogs.answerButton(Dialogs::Button::No);
        f.fileEntry("mnuSaveAs")->trigger();
        const auto asked = f.lastAsked();
        QCOMPARE(asked.kind, QStringLiteral("message"));
        QCOMPARE(asked.text, QStringLiteral("broken_800_480.ui was not read whole (line 3). "
                                            "Saving writes only what was read. Save anyway?"));
        QCOMPARE(asked.buttons, Dialogs::Buttons::YesNo);
        QVERIFY(f.askedOfKind(QStringLiteral("save")).isEmpty());
        QCOMPARE(readTestFile(file), broken);
    }

    void saveAsAfterAReadingErrorAnsweredYesGoesOn()
    {
        SaveFixture f;
        const QString file = f.skin.uiFolder() + "/broken_800_480.ui";
        QVERIFY(writeTestFile(file, "<LAYER ui_A>\r\n</LAYER>\r\n<TEXT stray x=1>\r\n"));
        f.window->openSkinFile(file);
        f.dialogs.answerButton(Dialogs::Button::Yes);
        f.window->button(QStringLiteral("Save"))->trigger();
        QCOMPARE(f.lastAsked().kind, QStringLiteral("save"));
    }

    void saveAsWithoutAReadingErrorAsksNothingFirst()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->button(QStringLiteral("Save"))->trigger();
        QCOMPARE(f.dialogs.asked().size(), 1);
        QCOMPARE(f.lastAsked().kind, QStringLiteral("save"));
        QCOMPARE(f.lastAsked().value, QFileInfo(f.skin.mainFile()).absoluteFilePath());
    }

    void saveAsOverTheOpenedFileIsWhatTheNextSaveChangesStartsFrom()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        f.dialogs.answerPath(f.skin.mainFile());
        f.dialogs.answerButton(Dialogs::Button::Yes);
        f.fileEntry("mnuSaveAs")->trigger();
        QCOMPARE(f.lastAsked().text, QStringLiteral("Saving complete"));
        // The whole document, in the layout of Save As.
        const QByteArray written = readTestFile(f.skin.mainFile());
        QVERIFY(written != replaced(f.mainBefore, "txtTitle x=100", "txtTitle x=7"));
        QVERIFY(written.contains("txtTitle x=7"));

        f.typeValue("Lui_Main|EbtnOk|Py", QStringLiteral("210"));
        QTRY_COMPARE(f.changesPanel()->text(), QStringLiteral("1 change in 1 file"));
        const int askedBefore = f.dialogs.asked().size();
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        // Only the list of files is shown: the file is what Save As wrote.
        QCOMPARE(f.dialogs.asked().size(), askedBefore + 1);
        QCOMPARE(f.lastAsked().buttons, Dialogs::Buttons::OkCancel);
        QCOMPARE(readTestFile(f.skin.mainFile()), replaced(written, "btnOk x=300 y=200", "btnOk x=300 y=210"));
        QVERIFY(f.stack().isClean());
        QCOMPARE(f.changesPanel()->text(), QString());
    }

    void saveAsAfterAllStartsInTheFolderWithNoFileName()
    {
        SaveFixture f;
        f.window->openSkinFolder(f.skin.uiFolder());
        f.fileEntry("mnuSaveAs")->trigger();
        QCOMPARE(f.lastAsked().kind, QStringLiteral("save"));
        QCOMPARE(f.lastAsked().value, f.skin.uiFolder() + QLatin1Char('/'));
    }

    void afterSaveAsOfAWholeFolderSaveChangesWritesTheNewFileOnlyAndSaysSo()
    {
        SaveFixture f;
        f.window->openSkinFolder(f.skin.uiFolder());
        const QString whole = f.skin.uiFolder() + "/whole.ui";
        f.dialogs.answerPath(whole);
        QTest::keyClick(f.window.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(QFileInfo::exists(whole));
        QVERIFY(f.changesPanel()->text().contains(QStringLiteral("Save Changes writes whole.ui only")));
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        QVERIFY(f.changesPanel()->text().contains(QStringLiteral("Save Changes writes whole.ui only")));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QVERIFY(readTestFile(whole).contains("txtTitle x=7"));
        QCOMPARE(readTestFile(f.skin.mainFile()), f.mainBefore);
        QCOMPARE(readTestFile(f.templatesFile()), f.templatesBefore);
        QVERIFY(f.stack().isClean());
    }

    // ---- the File menu -----------------------------------------------------------------------------

    void theFileMenuComesFirstWithItsEntriesAndKeys()
    {
        SaveFixture f;
        QMenu *file = f.control<QMenu>("mnuFile");
        QCOMPARE(f.window->menuBar()->actions().first(), file->menuAction());
        QStringList names;
        for (QAction *action : file->actions()) {
            if (!action->isSeparator())
                names << action->objectName();
        }
        QCOMPARE(names, QStringList({ "mnuOpen", "mnuOpenFolder", QString(), "mnuSaveChanges", "mnuSaveAs",
                                      "mnuExportPicture", "mnuPortSkin", "mnuQuit" }));
        QCOMPARE(file->actions().at(2)->menu(), f.control<QMenu>("mnuRecent"));
        QCOMPARE(f.fileEntry("mnuOpen")->shortcut(), QKeySequence(QKeySequence::Open));
        QCOMPARE(f.fileEntry("mnuSaveChanges")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
        QCOMPARE(f.fileEntry("mnuQuit")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    }

    void ctrlOShowsTheOpenDialog()
    {
        SaveFixture f;
        f.dialogs.answerPath(f.skin.mainFile());
        f.pressCtrl(Qt::Key_O);
        QCOMPARE(f.askedOfKind(QStringLiteral("open")).size(), 1);
        QVERIFY(f.tree().indexOfKey("Lui_Main").isValid());
    }

    void openFolderIsTheWholeFolderCommand()
    {
        SaveFixture f;
        f.dialogs.answerPath(f.skin.uiFolder());
        f.fileEntry("mnuOpenFolder")->trigger();
        QCOMPARE(f.lastAsked().title, QStringLiteral("Select Skin ui Directory"));
        QVERIFY(f.tree().indexOfKey("Lui_Common").isValid());
    }

    void ctrlQClosesTheWindow()
    {
        SaveFixture f;
        QVERIFY(f.window->isVisible());
        f.pressCtrl(Qt::Key_Q);
        QVERIFY(!f.window->isVisible());
    }

    // ---- recent files ---------------------------------------------------------------------------------

    void openedFilesAndFoldersAreRecentNewestFirstAndKeptForTheNextRun()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->openSkinFolder(f.skin.uiFolder());
        QMenu *recent = f.control<QMenu>("mnuRecent");
        emit recent->aboutToShow();
        QCOMPARE(recent->actions().size(), 2);
        QCOMPARE(recent->actions().at(0)->data().toString(), QFileInfo(f.skin.uiFolder()).absoluteFilePath());
        QCOMPARE(recent->actions().at(1)->data().toString(), QFileInfo(f.skin.mainFile()).absoluteFilePath());

        frmEditor next(EditorEnvironment{ f.document, f.context, f.dialogs, f.settings, f.web });
        QMenu *nextRecent = next.findChild<QMenu *>(QStringLiteral("mnuRecent"));
        emit nextRecent->aboutToShow();
        QCOMPARE(nextRecent->actions().size(), 2);
        QCOMPARE(nextRecent->actions().at(0)->data().toString(), QFileInfo(f.skin.uiFolder()).absoluteFilePath());
    }

    void aRecentEntryOpensItsFileAndAMissingOneIsGreyed()
    {
        SaveFixture f;
        const QString gone = f.skin.uiFolder() + "/gone_800_480.ui";
        QVERIFY(writeTestFile(gone, "<LAYER ui_Gone>\r\n</LAYER>\r\n"));
        f.window->openSkinFile(gone);
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(QFile::remove(gone));
        f.window->openSkinFolder(f.skin.uiFolder());
        QMenu *recent = f.control<QMenu>("mnuRecent");
        emit recent->aboutToShow();
        QCOMPARE(recent->actions().size(), 3);
        QVERIFY(!recent->actions().at(2)->isEnabled());
        QVERIFY(recent->actions().at(1)->isEnabled());
        recent->actions().at(1)->trigger();
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main_800_480.ui>"));
        QVERIFY(!f.tree().indexOfKey("Lui_Common").isValid());
    }

    void onlyTheLastTenAreKept()
    {
        SaveFixture f;
        for (int i = 0; i < 12; ++i) {
            const QString file = f.skin.uiFolder() + QStringLiteral("/skin%1.ui").arg(i);
            QVERIFY(writeTestFile(file, "<LAYER ui_A>\r\n</LAYER>\r\n"));
            f.window->openSkinFile(file);
        }
        QMenu *recent = f.control<QMenu>("mnuRecent");
        emit recent->aboutToShow();
        QCOMPARE(recent->actions().size(), 10);
        QVERIFY(recent->actions().first()->data().toString().endsWith(QStringLiteral("skin11.ui")));
        QVERIFY(recent->actions().last()->data().toString().endsWith(QStringLiteral("skin2.ui")));
    }

    // ---- export picture --------------------------------------------------------------------------------

    void exportPictureWritesTheCanvasAsPng()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main"));
        QTemporaryDir out;
        const QString path = out.filePath(QStringLiteral("main.png"));
        f.dialogs.answerPath(path);
        f.fileEntry("mnuExportPicture")->trigger();
        QCOMPARE(f.lastAsked().kind, QStringLiteral("save"));
        QCOMPARE(f.lastAsked().filter, QStringLiteral("PNG Picture|*.png"));
        const QImage written(path);
        QVERIFY(!written.isNull());
        QCOMPARE(written.convertToFormat(QImage::Format_RGB32), f.window->shownNode().picture());
    }

    void exportPictureDrawsWithoutTheSelectionAndProposesTheLayersName()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        // The layer alone, as the device shows it.
        f.window->selectNode(f.node("Lui_Main"));
        const QImage layerAlone = f.window->shownNode().picture();
        // The button chosen is drawn inverted on the canvas.
        f.window->selectNode(f.node("Lui_Main|EbtnOk"));
        QVERIFY(f.window->shownNode().picture() != layerAlone);
        QTemporaryDir out;
        const QString path = out.filePath(QStringLiteral("chosen.png"));
        f.dialogs.answerPath(path);
        f.fileEntry("mnuExportPicture")->trigger();
        QCOMPARE(f.lastAsked().kind, QStringLiteral("save"));
        QCOMPARE(f.lastAsked().value, QDir(f.skin.uiFolder()).filePath(QStringLiteral("ui_Main.png")));
        QCOMPARE(QImage(path).convertToFormat(QImage::Format_RGB32), layerAlone);
        // The canvas still shows the selection.
        QVERIFY(f.window->shownNode().picture() != layerAlone);
        QVERIFY(f.mshObject()->isVisible());
    }

    void exportPictureOverAFileAsksOnceAndNoLeavesIt()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main"));
        QTemporaryDir out;
        const QString path = out.filePath(QStringLiteral("main.png"));
        QVERIFY(writeTestFile(path, "old"));
        f.dialogs.answerPath(path);
        f.dialogs.answerButton(Dialogs::Button::No);
        f.fileEntry("mnuExportPicture")->trigger();
        QCOMPARE(f.askedOfKind(QStringLiteral("message")).size(), 1);
        QCOMPARE(f.lastAsked().text, QStringLiteral("File already exists, do you want to overwrite?"));
        QCOMPARE(readTestFile(path), QByteArray("old"));
    }

    // ---- progress -----------------------------------------------------------------------------------------

    void aLargeFolderShowsProgressWhileItIsRead()
    {
        SaveFixture f;
        QByteArray big = "<LAYER ui_Big>\r\n";
        while (big.size() < 2200 * 1024)
            big += "\t<TEXT txtLine x=1 y=2 w=3 h=4 text=Some_text_to_make_the_file_large>\r\n";
        big += "</LAYER>\r\n";
        QVERIFY(writeTestFile(f.skin.uiFolder() + "/big_800_480.ui", big));
        auto *bar = f.control<QProgressBar>("stbProgress");
        QSignalSpy steps(bar, &QProgressBar::valueChanged);
        f.window->openSkinFolder(f.skin.uiFolder());
        QVERIFY(steps.count() >= 2);
        QVERIFY(bar->isHidden());
    }

    void aSmallFolderShowsNoProgress()
    {
        SaveFixture f;
        auto *bar = f.control<QProgressBar>("stbProgress");
        QSignalSpy steps(bar, &QProgressBar::valueChanged);
        f.window->openSkinFolder(f.skin.uiFolder());
        QCOMPARE(steps.count(), 0);
    }

    void savingChangesInMoreThanTenFilesShowsProgress()
    {
        SaveFixture f;
        for (int i = 0; i < 11; ++i) {
            QVERIFY(writeTestFile(f.skin.uiFolder() + QStringLiteral("/part%1.ui").arg(i),
                                  QStringLiteral("<LAYER ui_P%1>\r\n\t<TEXT t x=1>\r\n</LAYER>\r\n").arg(i).toLatin1()));
        }
        f.window->openSkinFolder(f.skin.uiFolder());
        for (int i = 0; i < 11; ++i)
            f.typeValue(QStringLiteral("Lui_P%1|Et|Px").arg(i).toLatin1(), QStringLiteral("2"));
        QCOMPARE(f.stack().count(), 11);
        auto *bar = f.control<QProgressBar>("stbProgress");
        QSignalSpy shown(bar, &QProgressBar::valueChanged);
        // One step per file written, up to all eleven of them.
        QStringList steps;
        connect(bar, &QProgressBar::valueChanged, bar, [bar, &steps](int value) {
            steps << QStringLiteral("%1/%2").arg(value).arg(bar->maximum());
        });
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QVERIFY(shown.count() >= 1);
        QVERIFY(bar->isHidden());
        QVERIFY(readTestFile(f.skin.uiFolder() + "/part10.ui").contains("x=2"));
        QCOMPARE(steps.mid(0, 12), QStringList({ "0/11", "1/11", "2/11", "3/11", "4/11", "5/11", "6/11", "7/11",
                                                 "8/11", "9/11", "10/11", "11/11" }));
    }

    void savingChangesInAFewFilesShowsNoProgress()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Px", QStringLiteral("7"));
        auto *bar = f.control<QProgressBar>("stbProgress");
        QSignalSpy shown(bar, &QProgressBar::valueChanged);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QCOMPARE(shown.count(), 0);
    }

    // ---- typed values and names ---------------------------------------------------------------------

    void aTypedValueWithSpacesIsStoredInQuotes()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Ptext", QStringLiteral("Go home now"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("\"Go home now\""));
    }

    void aTypedValueWithBothQuotesIsRefusedAndNothingChanges()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Ptext", QStringLiteral("say \"it's\""));
        QCOMPARE(f.lastAsked().icon, Dialogs::Icon::Warning);
        QVERIFY(f.lastAsked().text.contains(QStringLiteral("cannot be stored")));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("Title"));
        QCOMPARE(f.stack().count(), 0);
    }

    void aTypedValueOutsideTheSkinsCharactersIsRefused()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.typeValue("Lui_Main|EtxtTitle|Ptext", QString::fromUtf8("\xe2\x86\x92 Home"));
        QCOMPARE(f.lastAsked().text,
                 QString::fromUtf8("\xe2\x80\x9c\xe2\x86\x92\xe2\x80\x9d cannot be written in Windows-1252, the code page of this skin"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("Title"));
    }

    void aGridValueWithSpacesIsStoredInQuotes()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        PowGridItem *row = f.gridRow(QStringLiteral("text"));
        QVERIFY(row);
        row->setCellText(PropertyGridFiller::ColValue, QStringLiteral("Go home now"));
        emit f.pgrProperty()->ItemChanged(row, PropertyGridFiller::ColValue);
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("\"Go home now\""));
    }

    void aRefusedGridValueLeavesTheValueAndTheCell()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        PowGridItem *row = f.gridRow(QStringLiteral("text"));
        row->setCellText(PropertyGridFiller::ColValue, QStringLiteral("two\nlines"));
        emit f.pgrProperty()->ItemChanged(row, PropertyGridFiller::ColValue);
        QVERIFY(f.lastAsked().text.contains(QStringLiteral("line break")));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Ptext"), QByteArray("Title"));
        QCOMPARE(f.gridRow(QStringLiteral("text"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("Title"));
        QCOMPARE(f.stack().count(), 0);
    }

    void aLayerNameThatIsNotOneWordIsRefused()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.dialogs.answerText(QStringLiteral("big button"));
        f.actions()->AddLayer();
        QCOMPARE(f.lastAsked().text,
                 QString::fromUtf8("\xe2\x80\x9c" "big button" "\xe2\x80\x9d cannot be a name: use letters, digits, _ and /"));
        QCOMPARE(f.stack().count(), 0);
        QVERIFY(!f.tree().indexOfKey("Lbig").isValid());
    }

    void anObjectNameThatIsNotOneWordIsRefused()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main"));
        f.dialogs.answerText(QStringLiteral("btn Home"));
        f.actions()->AddElement(QStringLiteral("BUTTON"));
        QVERIFY(f.lastAsked().text.contains(QStringLiteral("cannot be a name")));
        QCOMPARE(f.stack().count(), 0);
    }

    void aPropertyKeyThatIsNotOneWordIsRefusedAndAGoodOneIsLowerCased()
    {
        SaveFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.node("Lui_Main|EtxtTitle"));
        f.dialogs.answerText(QStringLiteral("my key"));
        f.actions()->AddProperty();
        QVERIFY(f.lastAsked().text.contains(QStringLiteral("cannot be a name")));
        QCOMPARE(f.stack().count(), 0);
        f.dialogs.answerText(QStringLiteral("Padding"));
        f.actions()->AddProperty();
        QCOMPARE(f.stack().count(), 1);
        QVERIFY(f.value("Lui_Main|EtxtTitle|Ppadding") != QByteArray("(none)"));
    }
};

QTEST_MAIN(TestFileMenu)
#include "tst_filemenu.moc"
