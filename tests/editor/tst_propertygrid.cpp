// SPDX-License-Identifier: MIT
// The property grid of the main window: columns the user resizes and that keep
// their widths, tooltips, the "..." button only where a chooser exists, the
// values an object inherits from its templates and font types, and the filter.

#include "EditorFixture.h"

#include "EditorSettings.h"
#include "GridContextMenu.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "SkinDocument.h"
#include "clsPowGridItems.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QUndoStack>

namespace {

const QByteArray kSkin = "<TEMPLATE tplBase color=#112233 align=center>\r\n"
                         "<TEMPLATE tplMid template=tplBase fontsize=14 color=#445566>\r\n"
                         "<TEMPLATE tplLoopA template=tplLoopB w=7>\r\n"
                         "<TEMPLATE tplLoopB template=tplLoopA h=8>\r\n"
                         "<FONTTYPE ftBig font=Arial fontsize=20 valign=top>\r\n"
                         "<LAYER ui_Main>\r\n"
                         "\t<TEXT txtA x=1 y=2 text=A template=tplMid fonttype=ftBig>\r\n"
                         "\t<TEXT txtLoop x=1 y=2 template=tplLoopA>\r\n"
                         "\t<TEXT txtLong x=1 y=2 onrelease='ShowLayer ui_Information; SetVar a 1; Redraw'>\r\n"
                         "\t<TEXT txtOwnColour x=1 y=2 template=tplMid color=#010203>\r\n"
                         "</LAYER>\r\n";

struct GridFixture : EditorFixture
{
    QTemporaryDir skinFolder;
    QString file;

    GridFixture()
    {
        file = skinFolder.path() + "/800_480/ui/grid_800_480.ui";
        QVERIFY(writeTestFile(file, kSkin));
        // Room for every row: the grid shares its side with the tree, and the
        // window's bottom with the Problems panel.
        window->resize(1400, 1200);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->openSkinFile(file);
        // Each test lists the inherited values itself when it wants them.
        hideInheritedValues();
    }

    QCheckBox *inherited() const { return control<QCheckBox>("chkInherited"); }
    void showInherited() { QTest::mouseClick(inherited(), Qt::LeftButton, Qt::NoModifier, inherited()->rect().center()); }

    QLineEdit *filter() const { return control<QLineEdit>("txtPropertyFilter"); }

    void select(const QByteArray &key)
    {
        const QModelIndex index = tree().indexOfKey(key);
        for (QModelIndex up = index.parent(); up.isValid(); up = up.parent())
            tvwObjects()->expand(up);
        window->selectNode(index);
    }

    clsElement *element(const QByteArray &key) { return tree().ResolveNodeKey(key).element; }

    int rowOf(const QString &name) const
    {
        clsPowGridItems *items = pgrProperty()->Items();
        for (int row = 1; row <= items->Count(); ++row) {
            if (items->Item(row)->CellText(PropertyGridFiller::ColProperty) == name)
                return row;
        }
        return 0;
    }
    PowGridItem *gridRow(const QString &name) const { return pgrProperty()->Items()->Item(rowOf(name)); }

    QStringList shownNames() const
    {
        QStringList names;
        for (const PowGridItem *row : *pgrProperty()->Items()) {
            if (row->Visible)
                names << row->CellText(PropertyGridFiller::ColProperty);
        }
        return names;
    }

    void clickCell(const QString &name, int column)
    {
        const QRect cell = pgrProperty()->cellRect(rowOf(name), column);
        QVERIFY2(!cell.isEmpty(), "the cell is not shown");
        QTest::mouseClick(pgrProperty(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }

    // Drags the right edge of a column in the header by dx pixels.
    void dragColumnEdge(int column, int dx)
    {
        PowGrid *grid = pgrProperty();
        const QRect cell = grid->cellRect(1, column);
        const QPoint edge(cell.right() + 1, cell.top() - grid->headerHeight() / 2);
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, edge);
        QTest::mouseMove(grid, edge + QPoint(dx, 0));
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, edge + QPoint(dx, 0));
    }
};

} // namespace

class TestPropertyGrid : public QObject
{
    Q_OBJECT

private slots:
    void theButtonShowsOnlyOnRowsWithAChooser()
    {
        GridFixture f;
        f.showInherited();
        f.select("Lui_Main|EtxtA");
        PowGrid *grid = f.pgrProperty();
        QVERIFY(!grid->isButtonShown(f.gridRow(QStringLiteral("x")), PropertyGridFiller::ColButton));
        QVERIFY(grid->isButtonShown(f.gridRow(QStringLiteral("color")), PropertyGridFiller::ColButton));
        f.clickCell(QStringLiteral("x"), PropertyGridFiller::ColButton);
        QVERIFY(f.dialogs.asked().isEmpty());
        f.dialogs.answerColor(std::nullopt);
        f.clickCell(QStringLiteral("color"), PropertyGridFiller::ColButton);
        QCOMPARE(f.dialogs.asked().size(), 1);
        QCOMPARE(f.dialogs.asked().first().kind, QStringLiteral("color"));
    }

    void columnWidthsDraggedAreKeptBetweenRuns()
    {
        GridFixture f;
        f.select("Lui_Main|EtxtA");
        PowGrid *grid = f.pgrProperty();
        const int before = grid->columnWidthPixels(PropertyGridFiller::ColProperty);
        const int valueBefore = grid->columnWidthPixels(PropertyGridFiller::ColValue);
        f.dragColumnEdge(PropertyGridFiller::ColProperty, 30);
        const int after = grid->columnWidthPixels(PropertyGridFiller::ColProperty);
        QVERIFY(qAbs(after - (before + 30)) <= 1);
        // The values give up the room the names took.
        QVERIFY2(qAbs(grid->columnWidthPixels(PropertyGridFiller::ColValue) - (valueBefore - 30)) <= 2,
                 qPrintable(QStringLiteral("%1 %2").arg(valueBefore).arg(grid->columnWidthPixels(PropertyGridFiller::ColValue))));

        f.window.reset();
        frmEditor again(EditorEnvironment{ f.document, f.context, f.dialogs, f.settings, f.web });
        PowGrid *kept = again.findChild<PowGrid *>(QStringLiteral("pgrProperty"));
        QCOMPARE(kept->columnWidthPixels(PropertyGridFiller::ColProperty), after);
    }

    void widthsKeptForOtherColumnsAreNotUsed()
    {
        GridFixture f;
        EditorSettings(f.settings).setPropertyColumnWidths({ 3000, 3000 });
        frmEditor again(EditorEnvironment{ f.document, f.context, f.dialogs, f.settings, f.web });
        PowGrid *grid = again.findChild<PowGrid *>(QStringLiteral("pgrProperty"));
        QCOMPARE(grid->columnWidthPixels(PropertyGridFiller::ColProperty),
                 f.pgrProperty()->columnWidthPixels(PropertyGridFiller::ColProperty));
    }

    void theValueColumnTakesTheWidthTheOthersLeave()
    {
        GridFixture f;
        f.select("Lui_Main|EtxtA");
        PowGrid *grid = f.pgrProperty();
        const auto rightOfLastColumn = [grid] {
            const QRect button = grid->cellRect(1, PropertyGridFiller::ColButton);
            return button.right();
        };
        const auto barLeft = [grid] {
            return grid->verticalBar()->isVisibleTo(grid) ? grid->verticalBar()->geometry().left() : grid->width();
        };
        // The last column ends at the grid's right edge, however wide the grid is made.
        QVERIFY2(qAbs(rightOfLastColumn() - barLeft()) <= 4,
                 qPrintable(QStringLiteral("%1 %2").arg(rightOfLastColumn()).arg(barLeft())));
        const int name = grid->columnWidthPixels(PropertyGridFiller::ColProperty);
        const int value = grid->columnWidthPixels(PropertyGridFiller::ColValue);
        const int gridWidth = grid->width();
        // The bar between the tree and grid and the canvas goes 300 pixels right.
        f.splMain()->setSplitterPosition(f.splMain()->SplitterPosition() + 4500);
        QTRY_VERIFY(grid->width() > gridWidth);
        QCOMPARE(grid->columnWidthPixels(PropertyGridFiller::ColProperty), name);
        QVERIFY(qAbs(grid->columnWidthPixels(PropertyGridFiller::ColValue) - (value + grid->width() - gridWidth)) <= 2);
        QVERIFY(qAbs(rightOfLastColumn() - barLeft()) <= 4);
        QVERIFY(!grid->horizontalBar()->isVisibleTo(grid));
    }

    void aValueIsEditedFromTheKeyboard()
    {
        GridFixture f;
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.select("Lui_Main|EtxtA");
        PowGrid *grid = f.pgrProperty();
        // Tab from the tree reaches the grid; Down selects its first row.
        f.tvwObjects()->setFocus();
        for (int i = 0; i < 6 && !grid->hasFocus(); ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(grid->hasFocus());
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(grid->SelRow(), f.rowOf(QStringLiteral("x")));
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(grid->SelRow(), f.rowOf(QStringLiteral("y")));
        // F2 edits the value (the window's F2, Rename, is not run).
        QTest::keyClick(grid, Qt::Key_F2);
        QVERIFY(f.dialogs.asked().isEmpty());
        QWidget *editor = QApplication::focusWidget();
        QVERIFY(editor && editor != grid && editor->isVisible());
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("35"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(f.value("Lui_Main|EtxtA|Py"), QByteArray("35"));
        QCOMPARE(f.stack().count(), 1);
        // Enter edits again; Escape leaves the value as it was.
        QTRY_VERIFY(grid->hasFocus());
        QCOMPARE(grid->SelRow(), f.rowOf(QStringLiteral("y")));
        QTest::keyClick(grid, Qt::Key_Return);
        editor = QApplication::focusWidget();
        QVERIFY(editor && editor != grid);
        QTest::keyClicks(editor, QStringLiteral("9"));
        QTest::keyClick(editor, Qt::Key_Escape);
        QCOMPARE(f.value("Lui_Main|EtxtA|Py"), QByteArray("35"));
        QCOMPARE(f.stack().count(), 1);
    }

    void theGridsContextMenuAddsRemovesCopiesAndResets()
    {
        GridFixture f;
        f.select("Lui_Main|EtxtOwnColour");
        PowGrid *grid = f.pgrProperty();
        auto *menu = f.control<GridContextMenu>("GridContextMenu");
        QString choose;
        QStringList offered;
        QList<bool> enabled;
        menu->popUpMenu = [&](QMenu &shown, QPoint) -> QAction * {
            offered.clear();
            enabled.clear();
            QAction *chosen = nullptr;
            for (QAction *action : shown.actions()) {
                if (action->isSeparator())
                    continue;
                offered << action->text();
                enabled << action->isEnabled();
                if (action->objectName() == choose && action->isEnabled())
                    chosen = action;
            }
            if (chosen)
                chosen->trigger();
            return chosen;
        };
        const auto rightClick = [&](const QString &name) {
            const QPoint at = grid->cellRect(f.rowOf(name), PropertyGridFiller::ColProperty).center();
            QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid->mapToGlobal(at));
            QApplication::sendEvent(grid, &event);
        };
        // Copy Value on the colour's row, which it selects.
        choose = QStringLiteral("mnuGridCopyValue");
        rightClick(QStringLiteral("color"));
        QCOMPARE(offered, (QStringList{ "Add Property...", "Remove Property", "Copy Value", "Reset to Inherited" }));
        QCOMPARE(enabled, (QList<bool>{ true, true, true, true }));
        QCOMPARE(grid->SelRow(), f.rowOf(QStringLiteral("color")));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("#010203"));
        // "x" is the object's own, with nothing to inherit.
        choose.clear();
        rightClick(QStringLiteral("x"));
        QCOMPARE(enabled, (QList<bool>{ true, true, true, false }));
        // Reset to Inherited: the template's colour is used again, in one undoable step.
        choose = QStringLiteral("mnuGridResetToInherited");
        rightClick(QStringLiteral("color"));
        QCOMPARE(f.value("Lui_Main|EtxtOwnColour|Pcolor"), QByteArray("(none)"));
        QCOMPARE(f.stack().count(), 1);
        f.stack().undo();
        QCOMPARE(f.value("Lui_Main|EtxtOwnColour|Pcolor"), QByteArray("#010203"));
        // Remove Property.
        choose = QStringLiteral("mnuGridRemoveProperty");
        rightClick(QStringLiteral("y"));
        QCOMPARE(f.value("Lui_Main|EtxtOwnColour|Py"), QByteArray("(none)"));
        QCOMPARE(f.value("Lui_Main|EtxtOwnColour|Px"), QByteArray("1"));
        // Add Property asks for the key among the ones the drawing reads.
        f.dialogs.answerText(QStringLiteral("z"));
        choose = QStringLiteral("mnuGridAddProperty");
        rightClick(QStringLiteral("x"));
        QCOMPARE(f.dialogs.asked().last().title, QStringLiteral("Add Property"));
        QVERIFY(!f.dialogs.asked().last().choices.isEmpty());
        QCOMPARE(f.value("Lui_Main|EtxtOwnColour|Pz"), QByteArray("0"));
    }

    void aLongValueShowsWhollyInItsToolTip()
    {
        GridFixture f;
        f.select("Lui_Main|EtxtLong");
        PowGrid *grid = f.pgrProperty();
        const QRect cell = grid->cellRect(f.rowOf(QStringLiteral("onrelease")), PropertyGridFiller::ColValue);
        QCOMPARE(grid->toolTipAt(cell.center()), QStringLiteral("'ShowLayer ui_Information; SetVar a 1; Redraw'"));
    }

    void inheritedValuesFollowTheOwnPropertiesDimmedWithTheirSource()
    {
        GridFixture f;
        f.showInherited();
        f.select("Lui_Main|EtxtA");
        QCOMPARE(f.shownNames(), QStringList({ "x", "y", "text", "template", "fonttype", "fontsize", "color",
                                                "align", "font", "valign" }));
        const clsElement *txtA = f.element("Lui_Main|EtxtA");
        for (const char *name : { "fontsize", "color", "align", "font", "valign" }) {
            PowGridItem *row = f.gridRow(QString::fromLatin1(name));
            QVERIFY(row->Dimmed);
            QVERIFY(PropertyGridFiller::isInherited(*row));
            // The grid shows what the renderer reads.
            QCOMPARE(row->CellText(PropertyGridFiller::ColValue).toLatin1(),
                     f.document.GetElementValue(name, txtA));
        }
        QVERIFY(!f.gridRow(QStringLiteral("x"))->Dimmed);
        QCOMPARE(f.gridRow(QStringLiteral("fontsize"))->ToolTip, QStringLiteral("From \"tplMid\""));
        QCOMPARE(f.gridRow(QStringLiteral("align"))->ToolTip, QStringLiteral("From \"tplBase\""));
        QCOMPARE(f.gridRow(QStringLiteral("valign"))->ToolTip, QStringLiteral("From \"ftBig\""));
        QCOMPARE(f.gridRow(QStringLiteral("fontsize"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("14"));
    }

    void inheritedValuesAreListedOnlyWhenAsked()
    {
        GridFixture f;
        f.select("Lui_Main|EtxtA");
        QCOMPARE(f.shownNames(), QStringList({ "x", "y", "text", "template", "fonttype" }));
        f.showInherited();
        QCOMPARE(f.shownNames().size(), 10);
        f.showInherited();
        QCOMPARE(f.shownNames().size(), 5);
    }

    void templatesThatLinkInACircleListEachValueOnce()
    {
        GridFixture f;
        f.showInherited();
        f.select("Lui_Main|EtxtLoop");
        QCOMPARE(f.shownNames(), QStringList({ "x", "y", "template", "w", "h" }));
    }

    void typingOverAnInheritedValueMakesItTheObjectsOwnInOneStep()
    {
        GridFixture f;
        f.showInherited();
        f.select("Lui_Main|EtxtA");
        const int steps = f.stack().count();
        f.clickCell(QStringLiteral("fontsize"), PropertyGridFiller::ColValue);
        QWidget *editor = QApplication::focusWidget();
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("30"));
        QTest::keyClick(editor, Qt::Key_Return);
        const clsElement *txtA = f.element("Lui_Main|EtxtA");
        QCOMPARE(txtA->Properties().Find("fontsize").value(), QByteArray("30"));
        QCOMPARE(f.stack().count(), steps + 1);
        PowGridItem *own = f.gridRow(QStringLiteral("fontsize"));
        QVERIFY(!own->Dimmed);
        QCOMPARE(own->CellText(PropertyGridFiller::ColValue), QStringLiteral("30"));
        QVERIFY(f.tree().indexOfKey("Lui_Main|EtxtA|Pfontsize").isValid());

        f.stack().undo();
        QVERIFY(!f.element("Lui_Main|EtxtA")->Properties().Find("fontsize"));
        QVERIFY(f.gridRow(QStringLiteral("fontsize"))->Dimmed);
        QCOMPARE(f.gridRow(QStringLiteral("fontsize"))->CellText(PropertyGridFiller::ColValue), QStringLiteral("14"));
    }

    void committingAnInheritedValueUnchangedAddsNothing()
    {
        GridFixture f;
        f.showInherited();
        f.select("Lui_Main|EtxtA");
        const int steps = f.stack().count();
        f.clickCell(QStringLiteral("align"), PropertyGridFiller::ColValue);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(f.stack().count(), steps);
        QVERIFY(!f.element("Lui_Main|EtxtA")->Properties().Find("align"));
    }

    void theFilterKeepsRowsWhoseNameOrValueHoldsItInAnyCase()
    {
        GridFixture f;
        f.showInherited();
        f.select("Lui_Main|EtxtA");
        f.filter()->setFocus();
        QTest::keyClicks(f.filter(), QStringLiteral("FONT"));
        QCOMPARE(f.shownNames(), QStringList({ "fonttype", "fontsize", "font" }));
        f.filter()->clear();
        QTest::keyClicks(f.filter(), QStringLiteral("arial"));
        QCOMPARE(f.shownNames(), QStringList({ "font" }));
        // Another object is shown through the same filter.
        f.select("Lui_Main|EtxtLoop");
        QCOMPARE(f.shownNames(), QStringList());
        f.filter()->clear();
        QCOMPARE(f.shownNames().size(), 5);
    }
};

QTEST_MAIN(TestPropertyGrid)
#include "tst_propertygrid.moc"
