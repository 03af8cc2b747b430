// SPDX-License-Identifier: MIT
// Editing a skin in the main window: pop-up menus, prompts, grid edits and
// choosers, picking and dragging on the canvas with real mouse events, undo,
// zoom, arrow keys and the question about unsaved changes.

#include "ShownNode.h"
#include "EditorFixture.h"

#include "LayerRenderer.h"
#include "MovableShape.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PowGrid.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "SkinCanvas.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "clsPowGridItems.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QRegularExpression>
#include <QUndoStack>

namespace {

const QByteArray kPickSkin = "<LAYER ui_Pick>\r\n"
                             "\t<TEXT txtHigh x=10 y=10 w=100 h=40 z=2 text=High bmp=\"a.bmp\">\r\n"
                             "\t<TEXT txtLow x=50 y=20 w=100 h=40 z=1 text=Low bmp=\"a.bmp\">\r\n"
                             "\t<TEXT txtFirst x=200 y=10 w=100 h=40 z=1 text=First bmp=\"a.bmp\">\r\n"
                             "\t<TEXT txtSecond x=250 y=20 w=100 h=40 z=1 text=Second bmp=\"a.bmp\">\r\n"
                             "\t<TEXT txtAlone x=10 y=200 w=100 h=40 text=Alone color=#FF0000 bmp=\"pic.bmp\">\r\n"
                             "\t<TEXT txtNoPlace w=60 h=30 text=NoPlace bmp=\"a.bmp\">\r\n"
                             "</LAYER>\r\n"
                             "<LAYER ui_Other>\r\n"
                             "\t<TEXT txtOne x=5 y=5 w=50 h=20 text=One>\r\n"
                             "\t<TEXT txtTwo x=5 y=50 w=50 h=20 text=Two>\r\n"
                             "</LAYER>\r\n"
                             "<OBSERVER obsWatch>\r\n"
                             "</OBSERVER>\r\n";

struct EditingFixture : EditorFixture
{
    QTemporaryDir skinFolder;
    QString file;
    QList<QMenu *> menusShown;
    QString chooseEntry;

    EditingFixture()
    {
        file = skinFolder.path() + "/800_480/ui/pick_800_480.ui";
        QVERIFY(writeTestFile(file, kPickSkin));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        actions()->popUpMenu = [this](QMenu &menu, QPoint) -> QAction * {
            menusShown << &menu;
            QList<QAction *> actions = menu.actions();
            for (QAction *action : menu.actions()) {
                if (action->menu())
                    actions << action->menu()->actions();
            }
            for (QAction *action : actions) {
                if (action->objectName() == chooseEntry || (!chooseEntry.isEmpty() && action->text() == chooseEntry)) {
                    action->trigger();
                    return action;
                }
            }
            return nullptr;
        };
        qint64 *now = &time;
        canvas()->clock = [now] { return *now; };
        window->openSkinFile(file);
    }

    qint64 time = 100000;

    void select(const QByteArray &key) { window->selectNode(node(key)); }

    ScriptedDialogs::Asked lastAsked() const
    {
        return dialogs.asked().isEmpty() ? ScriptedDialogs::Asked() : dialogs.asked().last();
    }

    clsElement *element(const QByteArray &key) { return tree().ResolveNodeKey(key).element; }

    void rightClick(const QByteArray &key)
    {
        const QModelIndex index = node(key);
        const QPoint at = tvwObjects()->visualRect(index).center();
        QTest::mousePress(tvwObjects()->viewport(), Qt::RightButton, Qt::NoModifier, at);
        QTest::mouseRelease(tvwObjects()->viewport(), Qt::RightButton, Qt::NoModifier, at);
    }

    void doubleClick(const QByteArray &key)
    {
        const QModelIndex index = node(key);
        const QPoint at = tvwObjects()->visualRect(index).center();
        QTest::mousePress(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseRelease(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }

    QRect box(const QByteArray &key)
    {
        const DrawnBox b = window->renderer().boxOf(element(key));
        return QRect(b.left, b.top, b.width, b.height);
    }

    PowGridItem *gridRow(const QString &name)
    {
        clsPowGridItems *items = pgrProperty()->Items();
        for (int row = 1; row <= items->Count(); ++row) {
            if (items->Item(row)->CellText(PropertyGridFiller::ColProperty) == name)
                return items->Item(row);
        }
        return nullptr;
    }

    QByteArray savedText()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("out.ui"));
        dialogs.answerPath(path);
        window->SaveCommand();
        return readTestFile(path);
    }
};

} // namespace

class TestEditing : public QObject
{
    Q_OBJECT

private slots:
    // ---- pop-up menus ------------------------------------------------------------------

    void rightClickingAnElementShowsTheElementMenuNeverTheLayerMenu()
    {
        EditingFixture f;
        f.rightClick("Lui_Pick|EtxtHigh");
        QCOMPARE(f.menusShown.size(), 1);
        QCOMPARE(f.menusShown.first(), f.mnuElement());
        QStringList entries;
        for (QAction *a : f.mnuElement()->actions())
            entries << a->text();
        QCOMPARE(entries, QStringList({ "Add Property", "Remove Object" }));
        QCOMPARE(f.tvwObjects()->currentIndex(), f.node("Lui_Pick|EtxtHigh"));
    }

    void rightClickMenusFollowTheNodeKind()
    {
        EditingFixture f;
        f.rightClick("Lui_Pick");
        f.rightClick("Lui_Pick|EtxtHigh|Px");
        f.rightClick("LobsWatch");
        QCOMPARE(f.menusShown, QList<QMenu *>({ f.mnuLayer(), f.mnuProperty() }));
        // The right-clicked node was selected even where no menu came.
        QCOMPARE(f.tvwObjects()->currentIndex(), f.node("LobsWatch"));
    }

    // ---- prompts ----------------------------------------------------------------------------

    void addingAPropertyTypedUpperCaseStoresItLowerCaseWithItsDefault()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("X"));
        f.chooseEntry = QStringLiteral("mnuAddProperty");
        f.rightClick("Lui_Pick|EtxtNoPlace");
        const auto &asked = f.lastAsked();
        QCOMPARE(asked.title, QStringLiteral("Add Property"));
        QCOMPARE(asked.text, QStringLiteral("Type New Property Name"));
        QCOMPARE(f.value("Lui_Pick|EtxtNoPlace|Px"), QByteArray("0"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtNoPlace|Px")), QStringLiteral("x=0"));
        QVERIFY(f.gridRow(QStringLiteral("x")));
        QCOMPARE(f.gridRow(QStringLiteral("x"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("0"));
    }

    void anAddedHideIsABareNodeThatDoubleClickLeavesAlone()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("hide"));
        f.chooseEntry = QStringLiteral("mnuAddProperty");
        f.rightClick("Lui_Pick|EtxtAlone");
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtAlone|Phide")), QStringLiteral("hide"));
        const int asked = f.dialogs.asked().size();
        f.doubleClick("Lui_Pick|EtxtAlone|Phide");
        QCOMPARE(f.dialogs.asked().size(), asked);
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Phide"), QByteArray("<NOV>"));
    }

    void doubleClickingAPropertyAsksForItsNewValue()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("77"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        const auto &asked = f.lastAsked();
        QCOMPARE(asked.title, QStringLiteral("Edit Value"));
        QCOMPARE(asked.text, QStringLiteral("Enter new Value"));
        QCOMPARE(asked.value, QStringLiteral("10"));
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("77"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtHigh|Px")), QStringLiteral("x=77"));
        // The node-click handling ran: the owner is drawn where the new value puts it.
        QCOMPARE(f.box("Lui_Pick|EtxtHigh").left(), 77);
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtHigh"));
    }

    void anEmptyAnswerToThePromptChangesNothing()
    {
        EditingFixture f;
        f.dialogs.answerText(QString());
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("10"));
        QCOMPARE(f.stack().count(), 0);
    }

    void addingAnObjectAsksItsNameAndDrawsIt()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("btnNew"));
        f.chooseEntry = QStringLiteral("BUTTON");
        f.rightClick("Lui_Pick");
        const auto &asked = f.lastAsked();
        QCOMPARE(asked.title, QStringLiteral("Add Element"));
        QCOMPARE(asked.text, QStringLiteral("Type New Object Name"));
        clsElement *added = f.element("Lui_Pick|EbtnNew");
        QVERIFY(added);
        QCOMPARE(added->ElementType(), QByteArray("BUTTON"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EbtnNew")), QStringLiteral("BUTTON:btnNew"));
        QCOMPARE(f.window->shownNode().shownLayer(), f.element("Lui_Pick"));
    }

    void addingAnObjectProposesAFreeNameOfItsTypeAndSelectsIt()
    {
        EditingFixture f;
        // A button is proposed "btn1"; a text, with no "txt1" in the layer, "txt1".
        f.dialogs.answerText(QStringLiteral("btn1"));
        f.chooseEntry = QStringLiteral("BUTTON");
        f.rightClick("Lui_Pick");
        QCOMPARE(f.lastAsked().value, QStringLiteral("btn1"));
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Pick|Ebtn1"));
        QCOMPARE(f.tvwObjects()->currentIndex(), f.tree().indexOfKey("Lui_Pick|Ebtn1"));
        // The next button is proposed the next free number.
        f.dialogs.answerText(QStringLiteral("btn2"));
        f.rightClick("Lui_Pick");
        QCOMPARE(f.lastAsked().value, QStringLiteral("btn2"));
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Pick|Ebtn2"));
        f.dialogs.answerText(QStringLiteral("chk1"));
        f.chooseEntry = QStringLiteral("CHECKBOX");
        f.rightClick("Lui_Pick");
        QCOMPARE(f.lastAsked().value, QStringLiteral("chk1"));
    }

    void addPropertyOffersTheKeysTheDrawingReadsWithTheirDefaults()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("font   (\"\")"));
        f.chooseEntry = QStringLiteral("mnuAddProperty");
        f.rightClick("Lui_Pick|EtxtNoPlace");
        const QStringList offered = f.lastAsked().choices;
        for (const char *key : { "x", "y", "z", "w", "h", "fontsize", "padding", "template", "fonttype", "color",
                                 "font", "align", "valign", "text", "bmp", "bmpalign", "bmpvalign", "iconspr",
                                 "iconalign", "iconvalign", "iconphase", "sprind", "paddingleft", "paddingright",
                                 "row", "col", "cellw", "cellh", "value", "element_template" })
            QVERIFY2(offered.contains(QLatin1String(key)) || offered.filter(QRegularExpression(
                         QStringLiteral("^%1 ").arg(QLatin1String(key)))).size() == 1,
                     key);
        // Each offered with the value it starts with.
        QVERIFY(offered.contains(QStringLiteral("x   (0)")));
        QVERIFY(offered.contains(QStringLiteral("onrelease   ('')")));
        QVERIFY(offered.contains(QStringLiteral("hide")));
        // A key chosen from the list is added with its default value.
        QCOMPARE(f.value("Lui_Pick|EtxtNoPlace|Pfont"), QByteArray("\"\""));
        // A key typed that the list does not hold is taken as typed.
        f.dialogs.answerText(QStringLiteral("myown"));
        f.rightClick("Lui_Pick|EtxtNoPlace");
        QCOMPARE(f.value("Lui_Pick|EtxtNoPlace|Pmyown"), QByteArray(""));
    }

    void anAddedObjectsTypeIsNotTakenFromItsMenuText()
    {
        EditingFixture f;
        // Some desktops give menu entries accelerators of their own.
        for (QAction *entry : f.mnuAddObject()->actions()) {
            if (entry->text() == QLatin1String("SPRITE"))
                entry->setText(QStringLiteral("S&PRITE"));
        }
        f.dialogs.answerText(QStringLiteral("sprNew"));
        f.chooseEntry = QStringLiteral("S&PRITE");
        f.rightClick("Lui_Pick");
        clsElement *added = f.element("Lui_Pick|EsprNew");
        QVERIFY(added);
        QCOMPARE(added->ElementType(), QByteArray("SPRITE"));
    }

    void addingALayerPutsItAtTheLayerLevel()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("ui_New"));
        f.chooseEntry = QStringLiteral("mnuAddLayer");
        f.rightClick("Lui_Pick");
        QCOMPARE(f.lastAsked().title, QStringLiteral("Add Layer"));
        QCOMPARE(f.lastAsked().text, QStringLiteral("Type New Layer Name"));
        const QModelIndex last = f.tree().index(f.tree().rowCount() - 1, 0);
        QCOMPARE(f.tree().nodeKey(last), QByteArray("Lui_New"));
        QCOMPARE(f.tree().nodeText(last), QStringLiteral("LAYER:ui_New"));
    }

    void removalsAskNoQuestionAndUndoBringsThemBack()
    {
        EditingFixture f;
        const QByteArray before = f.savedText();
        const int asked = f.dialogs.asked().size();
        f.chooseEntry = QStringLiteral("mnuRemoveProperty");
        f.rightClick("Lui_Pick|EtxtHigh|Pz");
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Pz"), QByteArray("(none)"));
        f.chooseEntry = QStringLiteral("mnuRemoveObject");
        f.rightClick("Lui_Pick|EtxtLow");
        QVERIFY(!f.element("Lui_Pick|EtxtLow"));
        f.chooseEntry = QStringLiteral("mnuRemoveLayer");
        f.rightClick("Lui_Other");
        QVERIFY(!f.element("Lui_Other"));
        QCOMPARE(f.dialogs.asked().size(), asked);
        QCOMPARE(f.stack().count(), 3);
        f.actions()->undoAction()->trigger();
        f.actions()->undoAction()->trigger();
        f.actions()->undoAction()->trigger();
        QCOMPARE(f.savedText(), before);
    }

    // ---- property grid ------------------------------------------------------------------------

    void aValueStoredInTheGridChangesTheDocumentNodeAndCanvas()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtHigh");
        PowGridItem *row = f.gridRow(QStringLiteral("y"));
        QVERIFY(row);
        row->setCellText(PropertyGridFiller::ColValue, QStringLiteral("33"));
        emit f.pgrProperty()->ItemChanged(row, PropertyGridFiller::ColValue);
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Py"), QByteArray("33"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtHigh|Py")), QStringLiteral("y=33"));
        QCOMPARE(f.box("Lui_Pick|EtxtHigh").top(), 33);
        QCOMPARE(f.gridRow(QStringLiteral("y"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("33"));
        f.stack().undo();
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Py"), QByteArray("10"));
        QCOMPARE(f.gridRow(QStringLiteral("y"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("10"));
        QCOMPARE(f.box("Lui_Pick|EtxtHigh").top(), 10);
    }

    void aChangeOfTheDocumentRedrawsTheCanvasAndRefillsTheGridWithoutShowingTheNodeAgain()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtHigh");
        QSignalSpy current(&f.window->skinDocument(), &SkinDocument::currentChanged);
        QVERIFY(f.window->skinDocument().setPropertyValue("Lui_Pick|EtxtHigh", "y", "33"));
        QCOMPARE(f.box("Lui_Pick|EtxtHigh").top(), 33);
        QCOMPARE(f.gridRow(QStringLiteral("y"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("33"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtHigh|Py")), QStringLiteral("y=33"));
        // A grid edit changes the value the same way, and the selection stays.
        PowGridItem *row = f.gridRow(QStringLiteral("x"));
        row->setCellText(PropertyGridFiller::ColValue, QStringLiteral("44"));
        emit f.pgrProperty()->ItemChanged(row, PropertyGridFiller::ColValue);
        QCOMPARE(f.box("Lui_Pick|EtxtHigh").left(), 44);
        QCOMPARE(current.count(), 0);
        QCOMPARE(f.tvwObjects()->currentIndex(), f.node("Lui_Pick|EtxtHigh"));
    }

    void newEditorWideValuesRedrawTheCanvas()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        const QSize before = f.pctTemplate()->picture().size();
        SkinContext context = f.window->skinDocument().context();
        context.SkinFormat = QStringLiteral("320_240");
        f.window->skinDocument().setContext(context);
        QVERIFY(before != QSize(320, 240));
        QCOMPARE(f.pctTemplate()->picture().size(), QSize(320, 240));
    }

    void aColourPresetsTheDigitsAsTheyStandAndWritesRedGreenBlue()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtAlone");
        f.dialogs.answerColor(QColor(255, 0, 0));
        emit f.pgrProperty()->ItemChanged(f.gridRow(QStringLiteral("color")), PropertyGridFiller::ColButton);
        // #FF0000 read as the number FF0000 is pure blue to the dialog.
        QCOMPARE(QColor(f.lastAsked().value), QColor(0, 0, 255));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Pcolor"), QByteArray("#FF0000"));
        f.dialogs.answerColor(QColor(0x12, 0x34, 0x56));
        emit f.pgrProperty()->ItemChanged(f.gridRow(QStringLiteral("color")), PropertyGridFiller::ColButton);
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Pcolor"), QByteArray("#123456"));
    }

    void aCancelledColourDialogChangesNothing()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtAlone");
        emit f.pgrProperty()->ItemChanged(f.gridRow(QStringLiteral("color")), PropertyGridFiller::ColButton);
        QCOMPARE(f.lastAsked().kind, QStringLiteral("color"));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Pcolor"), QByteArray("#FF0000"));
        QCOMPARE(f.stack().count(), 0);
    }

    void thePictureChooserStoresTheFileNameOnly()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtAlone");
        f.dialogs.answerPath(QStringLiteral("/some/where/new.bmp"));
        emit f.pgrProperty()->ItemChanged(f.gridRow(QStringLiteral("bmp")), PropertyGridFiller::ColButton);
        const auto &asked = f.lastAsked();
        QCOMPARE(asked.kind, QStringLiteral("open"));
        QCOMPARE(asked.title, QStringLiteral("Select Image"));
        // The filter the chooser starts with shows JPEG pictures and sprites too.
        QCOMPARE(asked.filter, QStringLiteral("Skin Pictures (*.bmp;*.jpg;*.jpeg;*.spr)|*.bmp;*.jpg;*.jpeg;*.spr|"
                                              "Korvi Image Files (*.bmp;*.spr)|*.bmp;*.spr|All Files|*.*"));
        QVERIFY(asked.value.endsWith(QStringLiteral("pic.bmp")));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Pbmp"), QByteArray("new.bmp"));
    }

    // ---- picking ------------------------------------------------------------------------------

    void inAnOverlapTheHigherZIsPicked()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        const QRect overlap = f.box("Lui_Pick|EtxtHigh").intersected(f.box("Lui_Pick|EtxtLow"));
        QVERIFY(!overlap.isEmpty());
        f.clickCanvas(overlap.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtHigh"));
        QCOMPARE(f.tvwObjects()->currentIndex(), f.node("Lui_Pick|EtxtHigh"));
        QVERIFY(f.mshObject()->isVisible());
    }

    void theHigherZIsPickedWhereverItStandsInTheFile()
    {
        EditingFixture f;
        QVERIFY(writeTestFile(f.file, "<LAYER ui_Stack>\r\n"
                                      "\t<TEXT txtBottom x=10 y=10 w=100 h=40 z=1 text=Bottom bmp=\"a.bmp\">\r\n"
                                      "\t<TEXT txtTop x=30 y=20 w=100 h=40 z=3 text=Top bmp=\"a.bmp\">\r\n"
                                      "\t<TEXT txtMiddle x=50 y=15 w=100 h=40 z=2 text=Middle bmp=\"a.bmp\">\r\n"
                                      "</LAYER>\r\n"));
        f.window->openSkinFile(f.file);
        f.select("Lui_Stack");
        const QRect overlap = f.box("Lui_Stack|EtxtBottom")
                                  .intersected(f.box("Lui_Stack|EtxtTop"))
                                  .intersected(f.box("Lui_Stack|EtxtMiddle"));
        QVERIFY(!overlap.isEmpty());
        f.clickCanvas(overlap.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Stack|EtxtTop"));
    }

    void anObjectWithoutANameIsPassedOverForTheOneUnderIt()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        f.element("Lui_Pick|EtxtHigh")->setStrName(QByteArray());
        const QRect overlap = f.box("Lui_Pick|EtxtHigh").intersected(f.box("Lui_Pick|EtxtLow"));
        QVERIFY(!overlap.isEmpty());
        f.clickCanvas(overlap.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtLow"));
    }

    void removeObjectOnATemplateNodeDoesNothing()
    {
        EditingFixture f;
        QVERIFY(writeTestFile(f.file, "<TEMPLATE tplOwn x=1 bmp=\"a.bmp\">\r\n" + kPickSkin));
        f.window->openSkinFile(f.file);
        f.chooseEntry = QStringLiteral("mnuRemoveObject");
        f.rightClick("TtplOwn");
        QCOMPARE(f.menusShown.last(), f.mnuElement());
        QVERIFY(f.element("TtplOwn"));
        QCOMPARE(f.stack().count(), 0);
    }

    void withEqualZTheLaterObjectIsPicked()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        const QRect overlap = f.box("Lui_Pick|EtxtFirst").intersected(f.box("Lui_Pick|EtxtSecond"));
        QVERIFY(!overlap.isEmpty());
        f.clickCanvas(overlap.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtSecond"));
    }

    void theEdgesOfADrawnBoxAreOutside()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        const QRect b = f.box("Lui_Pick|EtxtAlone");
        const QPoint middle = b.center();
        const int right = b.left() + b.width();
        const int bottom = b.top() + b.height();
        for (const QPoint edge : { QPoint(b.left(), middle.y()), QPoint(middle.x(), b.top()),
                                   QPoint(right, middle.y()), QPoint(middle.x(), bottom) }) {
            f.clickCanvas(edge);
            QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick"));
        }
        f.clickCanvas(QPoint(b.left() + 1, b.top() + 1));
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtAlone"));
    }

    void theMousePositionIsShownInCanvasPixels()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        f.canvas()->setZoom(300);
        QTest::mouseMove(f.pctTemplate(), QPoint(31, 62));
        // A window system moves the real pointer: its move comes as an event,
        // which may arrive after the call returns.
        QTRY_COMPARE(f.window->statusText(3), QStringLiteral("X:10 Y:20"));
    }

    // ---- dragging -----------------------------------------------------------------------------

    void withLockPressedNoFrameIsShownSoNothingMoves()
    {
        EditingFixture f;
        f.window->button(QStringLiteral("Lock"))->trigger();
        f.select("Lui_Pick");
        f.clickCanvas(f.box("Lui_Pick|EtxtAlone").center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtAlone"));
        QVERIFY(!f.mshObject()->isVisible());
        QTest::keyClick(f.pctTemplate(), Qt::Key_Right);
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("10"));
    }

    void pressAndDragOnAnObjectPicksAndMovesItInOneGesture()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        QVERIFY(!f.mshObject()->isVisible());
        const QPoint start = f.pctTemplate()->toWidget(QRect(f.box("Lui_Pick|EtxtAlone").center(), QSize(1, 1))).topLeft();
        QTest::mousePress(f.pctTemplate(), Qt::LeftButton, Qt::NoModifier, start);
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Pick|EtxtAlone"));
        QVERIFY(f.mshObject()->isVisible());
        // The frame holds the mouse now: the window gives it the moves and the release.
        QWidget *holder = QWidget::mouseGrabber();
        QVERIFY(holder && f.mshObject()->isAncestorOf(holder));
        QTest::mouseMove(holder, holder->mapFrom(f.pctTemplate(), start + QPoint(7, 3)));
        QTest::mouseMove(holder, holder->mapFrom(f.pctTemplate(), start + QPoint(14, 6)));
        QTest::mouseRelease(holder, Qt::LeftButton, Qt::NoModifier, holder->mapFrom(f.pctTemplate(), start + QPoint(14, 6)));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("24"));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Py"), QByteArray("206"));
        QCOMPARE(f.stack().count(), 1);
        QVERIFY(!QWidget::mouseGrabber());
        // A click alone picks and moves nothing.
        const QRect second = f.box("Lui_Pick|EtxtSecond");
        const QPoint other = f.pctTemplate()->toWidget(QRect(QPoint(second.right() - 3, second.center().y()), QSize(1, 1))).topLeft();
        QTest::mousePress(f.pctTemplate(), Qt::LeftButton, Qt::NoModifier, other);
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Pick|EtxtSecond"));
        holder = QWidget::mouseGrabber();
        QVERIFY(holder);
        QTest::mouseRelease(holder, Qt::LeftButton, Qt::NoModifier, holder->mapFrom(f.pctTemplate(), other));
        QCOMPARE(f.value("Lui_Pick|EtxtSecond|Px"), QByteArray("250"));
        QCOMPARE(f.stack().count(), 1);
        QVERIFY(!QWidget::mouseGrabber());
    }

    void draggingXTenByFiveLeftStoresFive()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        f.clickCanvas(f.box("Lui_Pick|EtxtAlone").center());
        QVERIFY(f.mshObject()->isVisible());
        f.dragFrame(-5, 0);
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("5"));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Py"), QByteArray("200"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtAlone|Px")), QStringLiteral("x=5"));
        // The frame was placed again around the object at its new place.
        const QRect frame = f.mshObject()->geometry();
        const int handle = f.mshObject()->handleSize();
        QCOMPARE(frame.left() + handle, f.box("Lui_Pick|EtxtAlone").left());
        f.stack().undo();
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("10"));
    }

    void aDragAddsTheCoordinatesAnObjectLacks()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtNoPlace");
        QVERIFY(f.mshObject()->isVisible());
        f.dragFrame(12, 7);
        QCOMPARE(f.value("Lui_Pick|EtxtNoPlace|Px"), QByteArray("12"));
        QCOMPARE(f.value("Lui_Pick|EtxtNoPlace|Py"), QByteArray("7"));
        QCOMPARE(f.tree().nodeText(f.node("Lui_Pick|EtxtNoPlace|Py")), QStringLiteral("y=7"));
        f.stack().undo();
        QCOMPARE(f.value("Lui_Pick|EtxtNoPlace|Px"), QByteArray("(none)"));
        QVERIFY(!f.node("Lui_Pick|EtxtNoPlace|Px").isValid());
    }

    void whileDraggingTheObjectIsDrawnAtItsMovingPlace()
    {
        EditingFixture f;
        f.select("Lui_Pick|EtxtAlone");
        const QImage before = f.pctTemplate()->picture();
        const QRect oldBox = f.box("Lui_Pick|EtxtAlone");
        QWidget *body = f.mshObject()->shpMove(MovableShape::BodyHandle);
        const QPoint at = body->rect().center();
        const QPoint start = body->mapTo(f.pctTemplate(), at);
        QTest::mousePress(body, Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseMove(body, body->mapFrom(f.pctTemplate(), start + QPoint(0, 60)));
        const QImage during = f.pctTemplate()->picture();
        QVERIFY(during != before);
        // The document is changed only when the button is released.
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Py"), QByteArray("200"));
        // Where the object stood, the picture now shows what lies under it.
        QVERIFY(during.copy(oldBox) != before.copy(oldBox));
        QCOMPARE(during.copy(oldBox.translated(0, 60)), before.copy(oldBox));
        QCOMPARE(f.box("Lui_Pick|EtxtAlone").top(), 260);
        QTest::mouseRelease(body, Qt::LeftButton, Qt::NoModifier, body->mapFrom(f.pctTemplate(), start + QPoint(0, 60)));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Py"), QByteArray("260"));
    }

    void pickingAndDraggingGiveTheSameChangesAtEveryZoom_data()
    {
        QTest::addColumn<int>("percent");
        QTest::newRow("50 %") << 50;
        QTest::newRow("100 %") << 100;
        QTest::newRow("300 %") << 300;
    }

    void pickingAndDraggingGiveTheSameChangesAtEveryZoom()
    {
        QFETCH(int, percent);
        EditingFixture f;
        f.select("Lui_Pick");
        f.canvas()->setZoom(percent);
        QCOMPARE(f.pctTemplate()->zoomPercent(), percent);
        const QRect overlap = f.box("Lui_Pick|EtxtHigh").intersected(f.box("Lui_Pick|EtxtLow"));
        f.clickCanvas(overlap.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Pick|EtxtHigh"));
        // The frame lies around the object's box at this zoom.
        const QRect expected = f.pctTemplate()->toWidget(f.box("Lui_Pick|EtxtHigh"));
        const int handle = f.mshObject()->handleSize();
        QCOMPARE(f.mshObject()->geometry(), expected.adjusted(-handle, -handle, handle, handle));
        // 10 canvas pixels right and 20 down, as the mouse moves at this zoom.
        f.dragFrame(10 * percent / 100, 20 * percent / 100);
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("20"));
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Py"), QByteArray("30"));
        QCOMPARE(f.stack().count(), 1);
    }

    void zoomStaysWithinItsRange()
    {
        EditingFixture f;
        for (int i = 0; i < 20; ++i)
            f.canvas()->zoomIn();
        QCOMPARE(f.pctTemplate()->zoomPercent(), 800);
        for (int i = 0; i < 20; ++i)
            f.canvas()->zoomOut();
        QCOMPARE(f.pctTemplate()->zoomPercent(), 25);
        f.canvas()->zoomNormal();
        QCOMPARE(f.pctTemplate()->zoomPercent(), 100);
    }

    void aZoomedPictureIsPixelExact()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        f.canvas()->setZoom(300);
        const QImage picture = f.pctTemplate()->picture();
        const QImage shown = f.pctTemplate()->grab(QRect(0, 0, 300, 300)).toImage();
        for (int y = 0; y < 300; y += 7) {
            for (int x = 0; x < 300; x += 5)
                QCOMPARE(QColor(shown.pixel(x, y)), QColor(picture.pixel(x / 3, y / 3)));
        }
    }

    // ---- keyboard --------------------------------------------------------------------------------

    void arrowKeysMoveTheObjectAndShiftMovesTen()
    {
        EditingFixture f;
        f.select("Lui_Pick");
        f.clickCanvas(f.box("Lui_Pick|EtxtAlone").center());
        QTest::keyClick(f.pctTemplate(), Qt::Key_Right);
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("11"));
        QTest::keyClick(f.pctTemplate(), Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Py"), QByteArray("210"));
        // Both within a second: one step.
        QCOMPARE(f.stack().count(), 1);
        f.time += 1500;
        QTest::keyClick(f.pctTemplate(), Qt::Key_Left);
        QCOMPARE(f.stack().count(), 2);
        f.stack().undo();
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("11"));
        f.stack().undo();
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Px"), QByteArray("10"));
        QCOMPARE(f.value("Lui_Pick|EtxtAlone|Py"), QByteArray("200"));
    }

    // ---- undo, redo and unsaved changes ---------------------------------------------------------

    void undoAndRedoHaveTheStandardShortcutsOnMenuAndToolbar()
    {
        EditingFixture f;
        QCOMPARE(f.actions()->undoAction()->shortcut(), QKeySequence(QKeySequence::Undo));
        QCOMPARE(f.actions()->redoAction()->shortcut(), QKeySequence(QKeySequence::Redo));
        QVERIFY(f.tlbMain()->actions().contains(f.actions()->undoAction()));
        QVERIFY(f.tlbMain()->actions().contains(f.actions()->redoAction()));
        QVERIFY(!f.actions()->undoAction()->isEnabled());
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        QVERIFY(f.actions()->undoAction()->isEnabled());
        f.actions()->undoAction()->trigger();
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("10"));
        f.actions()->redoAction()->trigger();
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("5"));
    }

    void ctrlYAndCtrlShiftZBothRedo()
    {
        EditingFixture f;
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        f.stack().undo();
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("10"));
        QTest::keyClick(f.window.get(), Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("5"));
        f.stack().undo();
        QTest::keyClick(f.window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("5"));
    }

    void theStatusBarShowsUnsavedChanges()
    {
        EditingFixture f;
        auto *modified = f.window->findChild<QLabel *>(QStringLiteral("stbModified"));
        QVERIFY(modified);
        QCOMPARE(modified->text(), QString());
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        QCOMPARE(modified->text(), QStringLiteral("Modified"));
        f.stack().undo();
        QCOMPARE(modified->text(), QString());
        f.stack().redo();
        f.savedText();
        QCOMPARE(modified->text(), QString());
    }

    void openWithUnsavedChangesAsksAndCancelKeepsTheWork()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        f.dialogs.answerButton(Dialogs::Button::Cancel);
        f.window->OpenCommand();
        const auto &asked = f.lastAsked();
        QCOMPARE(asked.kind, QStringLiteral("message"));
        QCOMPARE(asked.buttons, Dialogs::Buttons::YesNoCancel);
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("5"));
    }

    void dirWithUnsavedChangesAnsweredNoDiscardsTheWork()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        f.dialogs.answerButton(Dialogs::Button::No);
        f.dialogs.answerPath(QFileInfo(f.file).absolutePath());
        f.window->DirCommand();
        QCOMPARE(f.lastAsked().kind, QStringLiteral("folder"));
        QCOMPARE(f.value("Lui_Pick|EtxtHigh|Px"), QByteArray("10"));
        QCOMPARE(f.stack().count(), 0);
    }

    void closingWithUnsavedChangesAnsweredYesSavesFirst()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("saved.ui"));
        f.dialogs.answerButton(Dialogs::Button::Yes);
        f.dialogs.answerPath(path);
        QVERIFY(f.window->close());
        QVERIFY(readTestFile(path).contains("x=5"));
    }

    void closingWithUnsavedChangesAnsweredCancelKeepsTheWindow()
    {
        EditingFixture f;
        f.dialogs.answerText(QStringLiteral("5"));
        f.doubleClick("Lui_Pick|EtxtHigh|Px");
        f.dialogs.answerButton(Dialogs::Button::Cancel);
        QVERIFY(!f.window->close());
        QVERIFY(f.window->isVisible());
    }

    void closingWithoutChangesAsksNothing()
    {
        EditingFixture f;
        const int asked = f.dialogs.asked().size();
        QVERIFY(f.window->close());
        QCOMPARE(f.dialogs.asked().size(), asked);
    }
};

QTEST_MAIN(TestEditing)
#include "tst_editing.moc"
