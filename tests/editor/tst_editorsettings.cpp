// SPDX-License-Identifier: MIT
// The editor's own settings, kept in "Editor.ini" beside "Settings.ini": the
// grid's inherited values (listed unless the user turns them off), the grid
// step the moving frame snaps to, and the recent files, taken over once from
// the file earlier versions kept them in.

#include "ShownNode.h"
#include "EditorFixture.h"

#include "EditorSettings.h"
#include "LayerRenderer.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "clsPowGridItems.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QSettings>

namespace {

struct SettingsFixture : EditorFixture
{
    SmallSkin skin;

    SettingsFixture() { showWindow(); }

    void showWindow()
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    // The program started again with the same settings folder.
    void startAgain()
    {
        window.reset();
        window = std::make_unique<frmEditor>(EditorEnvironment{ document, context, dialogs, settings, web });
        window->setWindowState(Qt::WindowNoState);
        window->resize(1300, 860);
        showWindow();
    }

    QString programFile(const QString &name) const { return QDir(programFolder.path()).filePath(name); }

    QCheckBox *inherited() const { return control<QCheckBox>("chkInherited"); }
    QAction *gridStepEntry() const { return control<QAction>("mnuGridStep"); }

    void clickNode(const QByteArray &key)
    {
        const QPoint at = tvwObjects()->visualRect(node(key)).center();
        QTest::mouseClick(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }

    QStringList gridNames() const
    {
        QStringList names;
        for (const PowGridItem *row : *pgrProperty()->Items())
            names << row->CellText(PropertyGridFiller::ColProperty);
        return names;
    }

    const PowGridItem *gridRow(const QString &name) const
    {
        for (const PowGridItem *row : *pgrProperty()->Items()) {
            if (row->CellText(PropertyGridFiller::ColProperty) == name)
                return row;
        }
        return nullptr;
    }

    // The button of the main layer picked on the canvas.
    void pickButton()
    {
        clickNode("Lui_Main");
        const clsElement *button = tree().ResolveNodeKey("Lui_Main|EbtnOk").element;
        const DrawnBox box = window->renderer().boxOf(button);
        clickCanvas(QPoint(box.left + box.width / 2, box.top + box.height / 2));
        QCOMPARE(window->shownNode().currentObject(), button);
        QVERIFY(mshObject()->isVisible());
    }

    // The frame's body pressed at `from` (a point of the body) and dragged to `to`.
    void dragBody(QPoint from, QPoint to)
    {
        QWidget *body = mshObject()->shpMove(MovableShape::BodyHandle);
        QTest::mousePress(body, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(body, to);
        QTest::mouseRelease(body, Qt::LeftButton, Qt::NoModifier, to);
    }

    QByteArray buttonValue(const char *name)
    {
        return tree().ResolveNodeKey(QByteArray("Lui_Main|EbtnOk|P") + name).property.value();
    }

    QStringList recentEntries() const
    {
        QMenu *recent = control<QMenu>("mnuRecent");
        emit recent->aboutToShow();
        QStringList paths;
        for (const QAction *entry : recent->actions())
            paths << entry->data().toString();
        return paths;
    }
};

} // namespace

class TestEditorSettings : public QObject
{
    Q_OBJECT

private slots:
    void theWindowsPlaceAndSizeAreKeptForTheNextRun()
    {
        SettingsFixture f;
        f.window->resize(700, 500);
        QTest::qWait(20);
        // The window keeps its own least width.
        const QSize left = f.window->size();
        QCOMPARE(left.height(), 500);
        QVERIFY(f.window->close());
        QVERIFY(!EditorSettings(f.settings).windowGeometry().isEmpty());
        QVERIFY(!EditorSettings(f.settings).windowState().isEmpty());
        frmEditor next(EditorEnvironment{ f.document, f.context, f.dialogs, f.settings, f.web });
        QCOMPARE(next.size(), left);
    }

    // ---- inherited values ---------------------------------------------------------------------

    void inheritedValuesAreListedOnAFirstStart()
    {
        SettingsFixture f;
        QVERIFY(f.inherited()->isChecked());
        f.window->openSkinFile(f.skin.mainFile());
        f.clickNode("Lui_Main|EtxtTitle");
        // The object's own properties, then what its template and font type give it.
        QCOMPARE(f.gridNames().mid(0, 9), (QStringList{ "x", "y", "w", "h", "text", "template", "fonttype", "color",
                                                         "visible" }));
        QVERIFY(f.gridNames().contains(QStringLiteral("fontsize")));
        QVERIFY(f.gridNames().contains(QStringLiteral("font")));
        const PowGridItem *fontsize = f.gridRow(QStringLiteral("fontsize"));
        QVERIFY(fontsize->Dimmed);
        QVERIFY(PropertyGridFiller::isInherited(*fontsize));
    }

    void theInheritedBoxIsKeptBetweenRuns()
    {
        SettingsFixture f;
        f.hideInheritedValues();
        f.startAgain();
        QVERIFY(!f.inherited()->isChecked());
        f.window->openSkinFile(f.skin.mainFile());
        f.clickNode("Lui_Main|EtxtTitle");
        QVERIFY(!f.gridNames().contains(QStringLiteral("fontsize")));
        QTest::keyClick(f.inherited(), Qt::Key_Space);
        QVERIFY(f.gridNames().contains(QStringLiteral("fontsize")));
        f.startAgain();
        QVERIFY(f.inherited()->isChecked());
    }

    // ---- grid step ----------------------------------------------------------------------------

    void withoutAGridStepADragMovesByThePixel()
    {
        SettingsFixture f;
        QCOMPARE(f.mshObject()->GridAlignSize(), 0);
        QCOMPARE(f.gridStepEntry()->text(), QStringLiteral("&Grid Step (none)..."));
        f.window->openSkinFile(f.skin.mainFile());
        f.pickButton();
        f.dragBody(QPoint(13, 13), QPoint(18, 15));
        QCOMPARE(f.buttonValue("x"), QByteArray("305"));
        QCOMPARE(f.buttonValue("y"), QByteArray("202"));
    }

    void withAGridStepOf8ADragSnapsToTheGrid()
    {
        SettingsFixture f;
        f.dialogs.answerText(QStringLiteral("8"));
        f.gridStepEntry()->trigger();
        QCOMPARE(f.dialogs.asked().last().kind, QStringLiteral("text"));
        QCOMPARE(f.mshObject()->GridAlignSize(), 8);
        QCOMPARE(f.gridStepEntry()->text(), QStringLiteral("&Grid Step (8 px)..."));
        f.window->openSkinFile(f.skin.mainFile());
        f.pickButton();
        // Pressed at 13 the pointer counts as at 8; moved to 18 it counts as
        // at 16, so the frame goes 8 to the right; 13 to 15 stays at 8 down.
        f.dragBody(QPoint(13, 13), QPoint(18, 15));
        QCOMPARE(f.buttonValue("x"), QByteArray("308"));
        QCOMPARE(f.buttonValue("y"), QByteArray("200"));
    }

    void theGridStepIsKeptBetweenRunsOutsideSettingsIni()
    {
        SettingsFixture f;
        f.dialogs.answerText(QStringLiteral("16"));
        f.gridStepEntry()->trigger();
        f.window->close();
        QCOMPARE(readTestFile(f.programFile(QStringLiteral("Settings.ini"))), QByteArray("\r\n"));
        f.startAgain();
        QCOMPARE(f.mshObject()->GridAlignSize(), 16);
        QCOMPARE(EditorSettings(f.settings).gridStep(), 16);
    }

    void aGridStepThatIsNotAWholeNumberIsRefused()
    {
        SettingsFixture f;
        f.dialogs.answerText(QStringLiteral("8"));
        f.gridStepEntry()->trigger();
        f.dialogs.answerText(QStringLiteral("eight"));
        f.gridStepEntry()->trigger();
        QCOMPARE(f.dialogs.asked().last().kind, QStringLiteral("message"));
        QVERIFY(f.dialogs.asked().last().text.contains(QStringLiteral("\"eight\" is not a grid step")));
        QCOMPARE(f.mshObject()->GridAlignSize(), 8);
        // An empty answer is a cancel.
        f.dialogs.answerText(QString());
        f.gridStepEntry()->trigger();
        QCOMPARE(f.mshObject()->GridAlignSize(), 8);
        f.dialogs.answerText(QStringLiteral("0"));
        f.gridStepEntry()->trigger();
        QCOMPARE(f.mshObject()->GridAlignSize(), 0);
    }

    // ---- one file -----------------------------------------------------------------------------

    void theEditorsOwnSettingsShareEditorIniAndSettingsIniKeepsItsOneLine()
    {
        SettingsFixture f;
        QVERIFY(writeTestFile(f.programFile(QStringLiteral("Settings.ini")), "/skins/korvi\r\n"));
        f.startAgain();
        f.window->openSkinFile(f.skin.mainFile());
        f.hideInheritedValues();
        f.dialogs.answerText(QStringLiteral("4"));
        f.gridStepEntry()->trigger();
        f.window->close();

        QCOMPARE(QDir(f.programFolder.path()).entryList(QDir::Files),
                 (QStringList{ "Editor.ini", "Settings.ini" }));
        QCOMPARE(readTestFile(f.programFile(QStringLiteral("Settings.ini"))), QByteArray("/skins/korvi\r\n"));
        const QSettings kept(f.programFile(QStringLiteral("Editor.ini")), QSettings::IniFormat);
        QCOMPARE(kept.value(QStringLiteral("RecentFiles/Entries")).toStringList(),
                 QStringList{ QFileInfo(f.skin.mainFile()).absoluteFilePath() });
        QCOMPARE(kept.value(QStringLiteral("PropertyGrid/ShowInherited")).toBool(), false);
        QCOMPARE(kept.value(QStringLiteral("Canvas/GridStep")).toInt(), 4);
    }

    void recentFilesKeptByAnEarlierVersionAreTakenOverOnce()
    {
        SettingsFixture f;
        const QString formerFile = f.programFile(QStringLiteral("RecentFiles.txt"));
        const QByteArray former = "/skins/one/a.ui\n/skins/two\n";
        QVERIFY(writeTestFile(formerFile, former));
        f.startAgain();
        QCOMPARE(f.recentEntries(), (QStringList{ "/skins/one/a.ui", "/skins/two" }));

        f.window->openSkinFile(f.skin.mainFile());
        const QStringList now{ QFileInfo(f.skin.mainFile()).absoluteFilePath(), "/skins/one/a.ui", "/skins/two" };
        QCOMPARE(f.recentEntries(), now);
        // The old file is left as it was and no longer read.
        QCOMPARE(readTestFile(formerFile), former);
        QVERIFY(writeTestFile(formerFile, "/skins/three\n"));
        f.startAgain();
        QCOMPARE(f.recentEntries(), now);
    }
};

QTEST_MAIN(TestEditorSettings)
#include "tst_editorsettings.moc"
