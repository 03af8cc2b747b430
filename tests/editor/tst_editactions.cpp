// SPDX-License-Identifier: MIT
// The Edit menu's keys on the selected node, pressed as a user does: Delete,
// F2, Ctrl+C, Ctrl+V and Ctrl+D, each undone again.

#include "EditorFixture.h"

#include "EditActions.h"
#include "LayerRenderer.h"
#include "ElementClipboard.h"
#include "ElementText.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "SaveChanges.h"
#include "SkinDocument.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"
#include "clsPowGridItems.h"

#include <QClipboard>
#include <QDockWidget>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QUndoStack>

namespace {

const QByteArray kSkin = "<LAYER ui_Main>\r\n"
                         "\t<TEXT txtOne x=5 y=5 w=50 h=20 text=One>\r\n"
                         "\t<BUTTON btnOk x=300 y=200 w=80 h=40 visible>\r\n"
                         "</LAYER>\r\n"
                         "<LAYER ui_Other>\r\n"
                         "\t<TEXT txtTwo x=5 y=50 w=50 h=20 text=Two>\r\n"
                         "</LAYER>\r\n";

const QByteArray kThreeTexts = "<LAYER ui_Main>\r\n"
                               "\t<TEXT txtA x=1 y=1>\r\n"
                               "\t<TEXT txtB x=2 y=2>\r\n"
                               "\t<TEXT txtC x=3 y=3>\r\n"
                               "</LAYER>\r\n";

struct EditFixture : EditorFixture
{
    QTemporaryDir skinFolder;
    QString file;

    explicit EditFixture(const QByteArray &skin = kSkin)
    {
        file = skinFolder.path() + "/800_480/ui/edit_800_480.ui";
        QVERIFY(writeTestFile(file, skin));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->openSkinFile(file);
        activate();
    }

    void activate()
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    ScriptedDialogs::Asked lastAsked() const
    {
        return dialogs.asked().isEmpty() ? ScriptedDialogs::Asked() : dialogs.asked().last();
    }

    ObjectTreeModel &tree() { return *window->objectTree(); }
    SkinDocument &skin() { return window->skinDocument(); }
    QUndoStack &stack() { return skin().undoStack(); }
    clsElement *element(const QByteArray &key) { return skin().elementAt(key); }

    void select(const QByteArray &key)
    {
        window->selectNode(tree().indexOfKey(key));
        tvwObjects()->setFocus();
        QCOMPARE(skin().currentKey(), key);
    }

    // A shortcut reaches a window only while it is the active one, and a
    // window that another test shows on the same display (tests run two at a
    // time) may have just taken that place: the window is made active first.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(tvwObjects(), Qt::Key(key), modifiers);
    }

    // An object picked with a click on the canvas, its layer shown first;
    // the canvas keeps the focus.
    void pickOnCanvas(const QByteArray &key)
    {
        select(NodeKey(key).parent());
        clickCanvas(window->renderer().boxOf(element(key)).shownRect().center());
        QCOMPARE(skin().currentKey(), key);
        QVERIFY(pctTemplate()->hasFocus());
    }

    // The names of a block's children, in order.
    QByteArrayList childNames(const QByteArray &key)
    {
        QByteArrayList names;
        const clsElement *block = element(key);
        if (block && block->subElementCount() > 0) {
            for (const clsElement *child : block->SubElements())
                names << child->ElementKey();
        }
        return names;
    }

    QByteArray value(const QByteArray &propertyKey)
    {
        const NodeTarget target = skin().resolve(propertyKey);
        return target.property.isNull() ? QByteArray("(none)") : target.property.value();
    }
};

} // namespace

class tst_EditActions : public QObject
{
    Q_OBJECT

private slots:
    // ---- Delete ------------------------------------------------------------------------

    void deleteRemovesTheSelectedObjectAndUndoBringsItBack()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_Delete);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "btnOk" }));
        QVERIFY(!f.tree().indexOfKey("Lui_Main|EtxtOne").isValid());
        QCOMPARE(f.dialogs.asked().size(), 0);
        f.stack().undo();
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
    }

    void deleteRemovesTheSelectedPropertyAndALayer()
    {
        EditFixture f;
        f.select("Lui_Main|EbtnOk|Pvisible");
        f.press(Qt::Key_Delete);
        QCOMPARE(f.value("Lui_Main|EbtnOk|Pvisible"), QByteArray("(none)"));
        f.select("Lui_Other");
        f.press(Qt::Key_Delete);
        QVERIFY(!f.element("Lui_Other"));
        f.stack().undo();
        f.stack().undo();
        QCOMPARE(f.value("Lui_Main|EbtnOk|Pvisible"), QByteArray("<NOV>"));
        QVERIFY(f.element("Lui_Other"));
    }

    // ---- F2 --------------------------------------------------------------------------------

    void f2RenamesAnObjectKeepingItsPlaceAndProperties()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.dialogs.answerText(QStringLiteral("txtFirst"));
        f.press(Qt::Key_F2);
        QCOMPARE(f.lastAsked().title, QStringLiteral("Rename"));
        QCOMPARE(f.lastAsked().value, QStringLiteral("txtOne"));
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtFirst", "btnOk" }));
        QCOMPARE(f.value("Lui_Main|EtxtFirst|Ptext"), QByteArray("One"));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|EtxtFirst"));
        QCOMPARE(f.tree().nodeText(f.tree().indexOfKey("Lui_Main|EtxtFirst")), QStringLiteral("TEXT:txtFirst"));
        QVERIFY(!f.tree().indexOfKey("Lui_Main|EtxtOne").isValid());
        f.stack().undo();
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|EtxtOne"));
    }

    void f2RenamesALayerWhoseChildrenTakeTheNewKeys()
    {
        EditFixture f;
        f.select("Lui_Main");
        f.dialogs.answerText(QStringLiteral("ui_Front"));
        f.press(Qt::Key_F2);
        QCOMPARE(f.value("Lui_Front|EbtnOk|Px"), QByteArray("300"));
        QVERIFY(f.tree().indexOfKey("Lui_Front|EbtnOk|Px").isValid());
        QCOMPARE(f.skin().document().Layers().at(0)->strName(), QByteArray("ui_Front"));
    }

    void aNameTakenByASiblingIsNumbered()
    {
        EditFixture f;
        f.select("Lui_Main|EbtnOk");
        f.dialogs.answerText(QStringLiteral("txtOne"));
        f.press(Qt::Key_F2);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "txtOne[0]" }));
        QCOMPARE(f.element("Lui_Main|EtxtOne[0]")->strName(), QByteArray("txtOne"));
        f.stack().undo();
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
    }

    void aRefusedNameShowsWhyAndChangesNothing()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.dialogs.answerText(QStringLiteral("two words"));
        f.press(Qt::Key_F2);
        // The reason, then the prompt again with the typed text (cancelled here).
        const QList<ScriptedDialogs::Asked> asked = f.dialogs.asked();
        QCOMPARE(asked.size(), 3);
        QCOMPARE(asked.at(1).kind, QStringLiteral("message"));
        QVERIFY(asked.at(1).text.contains(QStringLiteral("cannot be a name")));
        QCOMPARE(asked.at(2).kind, QStringLiteral("text"));
        QCOMPARE(asked.at(2).value, QStringLiteral("two words"));
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
        QCOMPARE(f.stack().count(), 0);
    }

    void aRefusedNameCanBeCorrectedInTheReopenedPrompt()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.dialogs.answerText(QStringLiteral("two words"));
        f.dialogs.answerText(QStringLiteral("two_words"));
        f.press(Qt::Key_F2);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "two_words", "btnOk" }));
        QCOMPARE(f.stack().count(), 1);
    }

    void saveChangesWritesTheNewNameInPlaceAndTheCopyBesideIt()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.dialogs.answerText(QStringLiteral("txtFirst"));
        f.press(Qt::Key_F2);
        f.select("Lui_Other|EtxtTwo");
        f.press(Qt::Key_D, Qt::ControlModifier);
        SaveChanges saver(f.document);
        saver.setFileForNewElements(f.file);
        QVERIFY(saver.save([](const QString &) { return false; }).ok());
        QFile written(f.file);
        QVERIFY(written.open(QIODevice::ReadOnly));
        const QByteArray bytes = written.readAll();
        QVERIFY(bytes.startsWith("<LAYER ui_Main>\r\n"
                                 "\t<TEXT txtFirst x=5 y=5 w=50 h=20 text=One>\r\n"
                                 "\t<BUTTON btnOk x=300 y=200 w=80 h=40 visible>\r\n"
                                 "</LAYER>\r\n"));
        // The copy, with a name of its own and moved off its original, right after it.
        QVERIFY(bytes.contains("\t<TEXT txtTwo x=5 y=50 w=50 h=20 text=Two>\r\n"
                               "\t<TEXT txtTwo2 x=15 y=60 w=50 h=20 text=Two>\r\n"));
    }

    // ---- clipboard ----------------------------------------------------------------------

    void copyPutsTheSkinLinesAndThePrivateFormOnTheClipboard()
    {
        EditFixture f;
        f.select("Lui_Main|EbtnOk");
        f.press(Qt::Key_C, Qt::ControlModifier);
        const QMimeData *data = QGuiApplication::clipboard()->mimeData();
        QVERIFY(data->hasFormat(ElementClipboard::kMimeType));
        QCOMPARE(data->text(), QStringLiteral("<BUTTON btnOk x=300 y=200 w=80 h=40 visible>\r\n"));
    }

    void aClipboardRoundTripBetweenTwoWindows()
    {
        EditFixture from;
        EditFixture to("<LAYER ui_Target>\r\n\t<TEXT txtHere x=1>\r\n</LAYER>\r\n");
        from.activate();
        from.select("Lui_Main");
        from.press(Qt::Key_C, Qt::ControlModifier);
        to.activate();
        to.select("Lui_Target");
        to.press(Qt::Key_V, Qt::ControlModifier);
        // A layer goes after the layer selected, whole with its objects.
        QCOMPARE(to.skin().document().Layers().at(1)->strName(), QByteArray("ui_Main"));
        QCOMPARE(to.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
        QCOMPARE(to.value("Lui_Main|EbtnOk|Pvisible"), QByteArray("<NOV>"));
        QCOMPARE(to.skin().currentKey(), QByteArray("Lui_Main"));
        // An object goes into the layer selected.
        from.activate();
        from.select("Lui_Main|EtxtOne");
        from.press(Qt::Key_C, Qt::ControlModifier);
        to.activate();
        to.select("Lui_Target");
        to.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(to.childNames("Lui_Target"), QByteArrayList({ "txtHere", "txtOne" }));
        QCOMPARE(to.value("Lui_Target|EtxtOne|Ptext"), QByteArray("One"));
        to.stack().undo();
        to.stack().undo();
        QCOMPARE(to.childNames("Lui_Target"), QByteArrayList({ "txtHere" }));
        QCOMPARE(to.skin().document().Layers().Count(), 1);
    }

    void pastedNamesThatCollideAreNumbered()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_C, Qt::ControlModifier);
        f.press(Qt::Key_V, Qt::ControlModifier);
        f.press(Qt::Key_V, Qt::ControlModifier);
        // After the selected object, which the pasted copy then is; each copy
        // has a name of its own and moves off what it would hide.
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "txtOne2", "txtOne3", "btnOk" }));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|EtxtOne3"));
        QCOMPARE(f.value("Lui_Main|EtxtOne2|Px"), QByteArray("15"));
        QCOMPARE(f.value("Lui_Main|EtxtOne2|Py"), QByteArray("15"));
        QCOMPARE(f.value("Lui_Main|EtxtOne3|Px"), QByteArray("25"));
    }

    void textFromAnotherEditorIsReadAsASkinFile()
    {
        EditFixture f;
        QGuiApplication::clipboard()->setText(QStringLiteral("\t<TEXT txtNew x=7 y=8>\n\t<SPRITE sprA bmp=\"a.bmp\">\n"));
        f.select("Lui_Other");
        f.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo", "txtNew", "sprA" }));
        QCOMPARE(f.value("Lui_Other|EsprA|Pbmp"), QByteArray("\"a.bmp\""));
        QCOMPARE(f.stack().count(), 1);
        f.stack().undo();
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo" }));
    }

    // Pasted text is stored in the skin's code page, or refused whole.
    void pastedTextIsStoredInTheSkinsCodePage()
    {
        EditFixture f;
        f.control<QAction>("mnuCodePage_windows-1251")->trigger();
        QGuiApplication::clipboard()->setText(QStringLiteral("\t<TEXT txtNew x=7 y=8 text=\"Жук\">\n"));
        f.select("Lui_Other");
        f.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo", "txtNew" }));
        QCOMPARE(f.value("Lui_Other|EtxtNew|Ptext"), QByteArray("\"\xc6\xf3\xea\""));
    }

    void pastedTextTheCodePageCannotHoldIsRefused()
    {
        EditFixture f;
        f.control<QAction>("mnuCodePage_windows-1252")->trigger();
        QGuiApplication::clipboard()->setText(QStringLiteral("\t<TEXT txtNew x=7 y=8 text=\"Жук\">\n"));
        f.select("Lui_Other");
        f.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.lastAsked().title, QStringLiteral("Paste"));
        QVERIFY2(f.lastAsked().text.contains(
                     QStringLiteral("\u201cЖ\u201d cannot be written in Windows-1252, the code page of this skin")),
                 qPrintable(f.lastAsked().text));
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo" }));
        QCOMPARE(f.stack().count(), 0);
    }

    void textThatIsNoSkinIsRefusedWithTheReason()
    {
        EditFixture f;
        QGuiApplication::clipboard()->setText(QStringLiteral("just some words"));
        f.select("Lui_Other");
        f.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.lastAsked().kind, QStringLiteral("message"));
        QCOMPARE(f.lastAsked().title, QStringLiteral("Paste"));
        QCOMPARE(f.stack().count(), 0);
    }

    void duplicatePutsANumberedCopyAfterTheOriginal()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "txtOne2", "btnOk" }));
        QCOMPARE(f.value("Lui_Main|EtxtOne2|Ptext"), QByteArray("One"));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|EtxtOne2"));
        // A copy, not the same element.
        QVERIFY(f.element("Lui_Main|EtxtOne2") != f.element("Lui_Main|EtxtOne"));
        f.stack().undo();
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
        f.stack().redo();
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "txtOne2", "btnOk" }));
    }

    void aPastedObjectThatCoversNothingKeepsItsPlace()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_C, Qt::ControlModifier);
        f.select("Lui_Other|EtxtTwo");
        f.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo", "txtOne" }));
        QCOMPARE(f.value("Lui_Other|EtxtOne|Px"), QByteArray("5"));
        QCOMPARE(f.value("Lui_Other|EtxtOne|Py"), QByteArray("5"));
    }

    // ---- Delete aims at what has the focus ---------------------------------------------

    void deleteWithTheGridFocusedRemovesOnlyThePropertyOfItsRow()
    {
        EditFixture f;
        // Room for the grid's rows beside the tree and above the Problems panel.
        f.window->resize(1400, 1200);
        QTest::qWait(20);
        f.select("Lui_Main|EtxtOne");
        PowGrid *grid = f.pgrProperty();
        int row = 0;
        for (int r = 1; r <= grid->Items()->Count(); ++r) {
            if (grid->Items()->Item(r)->CellText(PropertyGridFiller::ColProperty) == QStringLiteral("text"))
                row = r;
        }
        QVERIFY(row > 0);
        const QRect cell = grid->cellRect(row, PropertyGridFiller::ColProperty);
        QVERIFY(!cell.isEmpty());
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, cell.center());
        QVERIFY(grid->hasFocus());
        QCOMPARE(grid->SelRow(), row);
        QVERIFY(grid->ShowSelectedRow());
        QTest::keyClick(grid, Qt::Key_Delete);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
        QCOMPARE(f.value("Lui_Main|EtxtOne|Ptext"), QByteArray("(none)"));
        QCOMPARE(f.value("Lui_Main|EtxtOne|Px"), QByteArray("5"));
        QCOMPARE(f.stack().count(), 1);
        f.stack().undo();
        QCOMPARE(f.value("Lui_Main|EtxtOne|Ptext"), QByteArray("One"));
    }

    void deleteWithTheTreeFocusedRemovesTheNode()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_Delete);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "btnOk" }));
    }

    void deleteWithTheCanvasFocusedRemovesThePickedObject()
    {
        EditFixture f;
        f.pickOnCanvas("Lui_Main|EtxtOne");
        QTest::keyClick(f.pctTemplate(), Qt::Key_Delete);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "btnOk" }));
        f.stack().undo();
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
    }

    void removingALayerWithObjectsSaysWhatWentAndUndoBringsItBack()
    {
        EditFixture f;
        f.select("Lui_Main");
        f.press(Qt::Key_Delete);
        QVERIFY(!f.element("Lui_Main"));
        QCOMPARE(f.control<QStatusBar>("stbMain")->currentMessage(),
                 QStringLiteral("Removed layer ui_Main and its 2 objects (Undo brings them back)"));
        f.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
    }

    void viewProblemsBringsTheClosedPanelBack()
    {
        EditFixture f;
        QDockWidget *dock = f.control<QDockWidget>("dockProblems");
        QVERIFY(dock->features() & QDockWidget::DockWidgetClosable);
        QVERIFY(dock->isVisible());
        dock->close();
        QVERIFY(!dock->isVisible());
        QAction *problems = f.control<QAction>("mnuProblems");
        QVERIFY(f.control<QMenu>("mnuView")->actions().contains(problems));
        QVERIFY(!problems->isChecked());
        problems->trigger();
        QVERIFY(dock->isVisible());
    }

    // ---- Save Changes after structural edits ---------------------------------------------

    void pasteAfterASelectedObjectSavesExactlyThePastedLinesAfterIt()
    {
        EditFixture f;
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_C, Qt::ControlModifier);
        f.press(Qt::Key_V, Qt::ControlModifier);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        QByteArray expected = kSkin;
        expected.insert(expected.indexOf("\t<BUTTON btnOk"), "\t<TEXT txtOne2 x=15 y=15 w=50 h=20 text=One>\r\n");
        QCOMPARE(readTestFile(f.file), expected);
        QVERIFY(f.stack().isClean());
        clsKorviInterface again;
        ReadUiFile(again, f.file, false);
        QCOMPARE(again.Layers().at(0)->SubElements().at(1)->strName(), QByteArray("txtOne2"));
        QCOMPARE(again.Layers().at(0)->SubElements().Count(), 3);
    }

    void afterSaveAsSaveChangesWritesOnlyTheNewFile()
    {
        EditFixture f;
        const QString copy = f.skinFolder.path() + "/800_480/ui/copy_800_480.ui";
        f.select("Lui_Main|EtxtOne");
        f.dialogs.answerPath(copy);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(QFile::exists(copy));
        const QByteArray written = readTestFile(copy);
        f.select("Lui_Main|EtxtOne");
        f.dialogs.answerText(QStringLiteral("txtFirst"));
        f.press(Qt::Key_F2);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(f.lastAsked().text.contains(QStringLiteral("copy_800_480.ui")));
        QVERIFY(!f.lastAsked().text.contains(QStringLiteral("edit_800_480.ui")));
        QCOMPARE(readTestFile(f.file), kSkin);
        QCOMPARE(readTestFile(copy), QByteArray(written).replace("txtOne", "txtFirst"));
        QVERIFY(f.stack().isClean());
    }

    void theFileSaveAsWroteIsRecentAndWatched()
    {
        EditFixture f;
        const QString copy = f.skinFolder.path() + "/800_480/ui/copy_800_480.ui";
        f.dialogs.answerPath(copy);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.select("Lui_Main|EtxtOne");
        f.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QMenu *recent = f.control<QMenu>("mnuRecent");
        emit recent->aboutToShow();
        QCOMPARE(recent->actions().at(0)->data().toString(), QFileInfo(copy).absoluteFilePath());
        // Another program changes the new file: the skin is read again from
        // it; a change to the old file is no longer the skin's business.
        QTest::qWait(50);
        QVERIFY(writeTestFile(copy, QByteArray(readTestFile(copy)).replace("text=One", "text=Outside")));
        QTRY_COMPARE(f.value("Lui_Main|EtxtOne|Ptext"), QByteArray("Outside"));
        QCOMPARE(f.window->windowTitle().contains(QStringLiteral("copy_800_480.ui")), true);
    }

    void duplicatesOfTheFirstAndAMiddleObjectSaveRightAfterTheirOriginals()
    {
        EditFixture f(kThreeTexts);
        f.select("Lui_Main|EtxtA");
        f.press(Qt::Key_D, Qt::ControlModifier);
        f.select("Lui_Main|EtxtB");
        f.press(Qt::Key_D, Qt::ControlModifier);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(readTestFile(f.file), QByteArray("<LAYER ui_Main>\r\n"
                                                  "\t<TEXT txtA x=1 y=1>\r\n"
                                                  "\t<TEXT txtA2 x=11 y=11>\r\n"
                                                  "\t<TEXT txtB x=2 y=2>\r\n"
                                                  "\t<TEXT txtB2 x=12 y=12>\r\n"
                                                  "\t<TEXT txtC x=3 y=3>\r\n"
                                                  "</LAYER>\r\n"));
        QVERIFY(f.stack().isClean());
    }

    // ---- order ------------------------------------------------------------------------

    void ctrlShiftDownAndUpMoveAnObjectAndSaveChangesWritesTheNewOrder()
    {
        EditFixture f(kThreeTexts);
        f.clickNode("Lui_Main|EtxtA");
        f.press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
        f.press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtB", "txtC", "txtA" }));
        // The moved object stays the one worked on, in the tree too.
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|EtxtA"));
        QCOMPARE(f.tvwObjects()->currentIndex(), f.tree().indexOfKey("Lui_Main|EtxtA"));
        QCOMPARE(f.tree().indexOfKey("Lui_Main|EtxtA").row(), 2);
        QCOMPARE(f.stack().undoText(), QStringLiteral("Move txtA down"));
        f.clickNode("Lui_Main|EtxtC");
        f.press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtC", "txtB", "txtA" }));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        const QByteArray reordered = "<LAYER ui_Main>\r\n"
                                     "\t<TEXT txtC x=3 y=3>\r\n"
                                     "\t<TEXT txtB x=2 y=2>\r\n"
                                     "\t<TEXT txtA x=1 y=1>\r\n"
                                     "</LAYER>\r\n";
        QCOMPARE(readTestFile(f.file), reordered);
        QVERIFY(f.stack().isClean());
        clsKorviInterface again;
        ReadUiFile(again, f.file, false);
        QCOMPARE(again.Layers().at(0)->SubElements().at(0)->strName(), QByteArray("txtC"));
        // Undone, the order is the first one again, and so is the file once saved.
        f.press(Qt::Key_Z, Qt::ControlModifier);
        f.press(Qt::Key_Z, Qt::ControlModifier);
        f.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtA", "txtB", "txtC" }));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(readTestFile(f.file), kThreeTexts);
    }

    void aLayerMovesPastItsNeighbourAndIsSavedThere()
    {
        EditFixture f;
        f.clickNode("Lui_Main");
        f.press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.skin().document().Layers().at(0)->strName(), QByteArray("ui_Other"));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        const QByteArray main = kSkin.left(kSkin.indexOf("<LAYER ui_Other"));
        QCOMPARE(readTestFile(f.file), kSkin.mid(main.size()) + main);
    }

    void withTheCanvasFocusedCtrlShiftArrowsReorderAndNeverNudge()
    {
        EditFixture f;
        f.pickOnCanvas("Lui_Main|EtxtOne");
        // First in its layer it cannot move up, and it does not move on the canvas either.
        QTest::keyClick(f.pctTemplate(), Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.value("Lui_Main|EtxtOne|Py"), QByteArray("5"));
        QCOMPARE(f.stack().count(), 0);
        QTest::keyClick(f.pctTemplate(), Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "btnOk", "txtOne" }));
        QCOMPARE(f.value("Lui_Main|EtxtOne|Py"), QByteArray("5"));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|EtxtOne"));
    }

    void moveIsOfferedOnlyWhereThereIsAPlaceToGo()
    {
        EditFixture f;
        EditActions *edit = f.window->findChild<EditActions *>();
        QVERIFY(edit);
        const auto offered = [&] {
            return QPair<bool, bool>(edit->moveUpAction()->isEnabled(), edit->moveDownAction()->isEnabled());
        };
        f.clickNode("Lui_Main|EtxtOne");
        QCOMPARE(offered(), qMakePair(false, true));
        f.clickNode("Lui_Main|EbtnOk");
        QCOMPARE(offered(), qMakePair(true, false));
        f.clickNode("Lui_Other");
        QCOMPARE(offered(), qMakePair(true, false));
        // A property has no place in the order of objects.
        f.clickNode("Lui_Main|EtxtOne|Px");
        QCOMPARE(offered(), qMakePair(false, false));
        // Where there is no place to go, the keys change nothing.
        f.clickNode("Lui_Main|EtxtOne");
        f.press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.stack().count(), 0);
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btnOk" }));
    }

    // ---- Add Object ---------------------------------------------------------------------

    void addObjectFromTheEditMenuGoesRightAfterTheSelectedObjectAndIsSavedThere()
    {
        EditFixture f;
        EditActions *edit = f.window->findChild<EditActions *>();
        QVERIFY(edit && edit->addObjectMenu());
        const auto addFromEditMenu = [&](const QString &type) {
            for (QAction *entry : edit->addObjectMenu()->actions()) {
                if (entry->data().toString() == type)
                    entry->trigger();
            }
        };
        f.clickNode("Lui_Main|EtxtOne");
        QVERIFY(edit->addObjectMenu()->isEnabled());
        f.dialogs.answerText(QStringLiteral("btn1"));
        addFromEditMenu(QStringLiteral("BUTTON"));
        QCOMPARE(f.lastAsked().value, QStringLiteral("btn1"));
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btn1", "btnOk" }));
        QCOMPARE(f.skin().currentKey(), QByteArray("Lui_Main|Ebtn1"));
        // A selected property stands for its object; a selected layer takes
        // the new object at its end.
        f.clickNode("Lui_Main|EbtnOk|Px");
        f.dialogs.answerText(QStringLiteral("spr1"));
        addFromEditMenu(QStringLiteral("SPRITE"));
        QCOMPARE(f.childNames("Lui_Main"), QByteArrayList({ "txtOne", "btn1", "btnOk", "spr1" }));
        f.clickNode("Lui_Other");
        f.dialogs.answerText(QStringLiteral("chk1"));
        addFromEditMenu(QStringLiteral("CHECKBOX"));
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo", "chk1" }));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.press(Qt::Key_S, Qt::ControlModifier);
        QByteArray expected = kSkin;
        expected.insert(expected.indexOf("\t<BUTTON btnOk"), "\t<BUTTON btn1>\r\n");
        expected.insert(expected.indexOf("</LAYER>"), "\t<SPRITE spr1>\r\n");
        expected.insert(expected.lastIndexOf("</LAYER>"), "\t<CHECKBOX chk1>\r\n");
        QCOMPARE(readTestFile(f.file), expected);
        QVERIFY(f.stack().isClean());
        // One Ctrl+Z takes one added object away.
        f.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.childNames("Lui_Other"), QByteArrayList({ "txtTwo" }));
    }

    void addObjectIsOfferedWhereAnObjectCanGo()
    {
        EditFixture f;
        EditActions *edit = f.window->findChild<EditActions *>();
        QVERIFY(edit && edit->addObjectMenu());
        f.skin().setCurrent(QByteArray());
        QVERIFY(!edit->addObjectMenu()->isEnabled());
        f.clickNode("Lui_Main");
        QVERIFY(edit->addObjectMenu()->isEnabled());
        QCOMPARE(edit->addObjectMenu()->actions().size(), f.mnuAddObject()->actions().size());
    }
};

QTEST_MAIN(tst_EditActions)
#include "tst_editactions.moc"
