// SPDX-License-Identifier: MIT
#include "ShownNode.h"
#include "EditorFixture.h"
#include "ObjectTreeModel.h"
#include "ElementCommands.h"
#include "ProblemListModel.h"
#include "ProblemsController.h"
#include "ProblemsPanel.h"
#include "SkinChecker.h"
#include "SkinDocument.h"

#include <QDockWidget>
#include <QLabel>
#include <QUndoStack>

// The Problems panel in the window: filled when a skin is opened and again
// after the user pauses from editing; a double-click on a problem shows its
// node and its file and line; the status bar counts errors and warnings.
namespace {

struct ProblemsWindow : EditorFixture
{
    SmallSkin skin;

    ProblemsPanel *panel() const { return control<ProblemsPanel>("problemsPanel"); }
    ProblemsController *problems() const { return control<ProblemsController>("ProblemsController"); }
    QString counts() const { return control<QLabel>("stbProblemCounts")->text(); }
    QString place() const { return control<QLabel>("stbProblemPlace")->text(); }

    // The row of the first problem with this code, as the view shows it.
    QModelIndex rowOf(const QString &code) const
    {
        const QAbstractItemModel *model = panel()->view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, ProblemListModel::CodeColumn).data().toString() == code)
                return model->index(row, ProblemListModel::MessageColumn);
        }
        return {};
    }

    QStringList codes() const
    {
        QStringList codes;
        const QAbstractItemModel *model = panel()->view()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            codes << model->index(row, ProblemListModel::CodeColumn).data().toString();
        return codes;
    }
};

} // namespace

class TestProblemsDock : public QObject
{
    Q_OBJECT

private slots:
    void thePanelIsADockOfTheWindow()
    {
        ProblemsWindow f;
        auto *dock = f.control<QDockWidget>("dockProblems");
        QCOMPARE(dock->widget(), static_cast<QWidget *>(f.panel()));
        QCOMPARE(f.window->dockWidgetArea(dock), Qt::BottomDockWidgetArea);
        QCOMPARE(f.panel()->view()->model()->rowCount(), 0);
    }

    void openingASkinFillsThePanelAndTheCounts()
    {
        ProblemsWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(f.codes().contains(QStringLiteral("missing-picture")));
        QVERIFY(f.panel()->errorCount() >= 1);
        QCOMPARE(f.counts(), QStringLiteral("%1 %2, %3 %4")
                                 .arg(f.panel()->errorCount())
                                 .arg(f.panel()->errorCount() == 1 ? "error" : "errors")
                                 .arg(f.panel()->warningCount())
                                 .arg(f.panel()->warningCount() == 1 ? "warning" : "warnings"));
    }

    void removingALayerDropsItsProblemsAtOnce()
    {
        ProblemsWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        const QAbstractItemModel *model = f.panel()->view()->model();
        const auto keys = [model] {
            QList<QByteArray> keys;
            for (int row = 0; row < model->rowCount(); ++row)
                keys << model->index(row, 0).data(ProblemListModel::NodeKeyRole).toByteArray();
            return keys;
        };
        QByteArray layer;
        for (const QByteArray &key : keys()) {
            if (key.startsWith('L') && layer.isEmpty())
                layer = key.left(key.indexOf('|') < 0 ? key.size() : key.indexOf('|'));
        }
        QVERIFY2(!layer.isEmpty(), "no problem of a layer to remove");
        SkinDocument &doc = f.window->skinDocument();
        doc.undoStack().push(new RemoveElementCommand(doc, layer));
        QVERIFY(!doc.elementAt(layer));
        // At once, before the next check.
        for (const QByteArray &key : keys())
            QVERIFY2(key != layer && !key.startsWith(layer + '|'), key.constData());
    }

    void readingErrorsOfTheOpenAreProblems()
    {
        ProblemsWindow f;
        QVERIFY(writeTestFile(f.skin.uiFolder() + "/broken.ui", "<TEXT txtLost x=1>\r\n<LAYER ui_B>\r\n</LAYER>\r\n"));
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.window->openSkinFile(f.skin.uiFolder() + "/broken.ui");
        QVERIFY(f.codes().contains(QStringLiteral("reading-error")));
        // Opening again starts afresh: the old reading error is gone.
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(!f.codes().contains(QStringLiteral("reading-error")));
    }

    void anEditThatAddsAProblemIsCountedOnceTheUserPauses()
    {
        ProblemsWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        const int errors = f.panel()->errorCount();
        QVERIFY(!f.codes().contains(QStringLiteral("unknown-template")));
        SkinDocument &skin = f.window->skinDocument();
        QVERIFY(skin.setPropertyValue("Lui_Back|EtxtBack", "text", "Front"));
        QVERIFY(skin.addProperty("Lui_Back|EtxtBack", "template", "tplNowhere") >= 0);
        // Not at once: the check waits for a pause in the editing.
        QVERIFY(f.problems()->checkPending());
        QCOMPARE(f.panel()->errorCount(), errors);
        QTRY_COMPARE(f.panel()->errorCount(), errors + 1);
        QVERIFY(f.codes().contains(QStringLiteral("unknown-template")));
        QVERIFY(f.counts().startsWith(QStringLiteral("%1 errors").arg(errors + 1)));
    }

    void aPastedObjectsProblemIsPlacedInItsFileOnceSaved()
    {
        ProblemsWindow f;
        f.window->show();
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.window->openSkinFile(f.skin.mainFile());
        f.window->selectNode(f.tree().indexOfKey("Lui_Main|EbtnOk"));
        f.tvwObjects()->setFocus();
        QTest::keyClick(f.tvwObjects(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(f.tvwObjects(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Main|EbtnOk2"));
        const QAbstractItemModel *model = f.panel()->view()->model();
        const auto rowOfKey = [model](const QByteArray &key) {
            for (int row = 0; row < model->rowCount(); ++row) {
                if (model->index(row, 0).data(ProblemListModel::NodeKeyRole).toByteArray() == key)
                    return row;
            }
            return -1;
        };
        // The copy misses its picture too; before a save it has no line.
        QTRY_VERIFY(rowOfKey("Lui_Main|EbtnOk2") >= 0);
        QCOMPARE(model->index(rowOfKey("Lui_Main|EbtnOk2"), 0).data(ProblemListModel::LineRole).toLongLong(), 0);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        QTest::keyClick(f.window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(f.window->skinDocument().undoStack().isClean());
        // The copy's lines follow the original's, on line 12 of the file.
        QVERIFY(readTestFile(f.skin.mainFile()).contains("bmp=missing.bmp>\r\n\t<BUTTON btnOk2 "));
        QTRY_COMPARE(model->index(rowOfKey("Lui_Main|EbtnOk2"), 0).data(ProblemListModel::LineRole).toLongLong(), 13);
        QCOMPARE(QFileInfo(model->index(rowOfKey("Lui_Main|EbtnOk2"), 0).data(ProblemListModel::FileRole).toString()).fileName(),
                 QStringLiteral("main_800_480.ui"));
    }

    void anEditThatRemovesAProblemIsCounted()
    {
        ProblemsWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        const int errors = f.panel()->errorCount();
        QVERIFY(f.codes().contains(QStringLiteral("missing-picture")));
        QVERIFY(f.window->skinDocument().removeProperty("Lui_Main|EbtnOk", "bmp"));
        QTRY_COMPARE(f.panel()->errorCount(), errors - 1);
        QVERIFY(!f.codes().contains(QStringLiteral("missing-picture")));
    }

    // A check made a few elements at a time, as a large skin is checked.
    void aCheckInSlicesFillsThePanelWhenItIsComplete()
    {
        ProblemsWindow f;
        f.problems()->setElementsPerSlice(1);
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(f.problems()->checkRunning());
        // The panel shows nothing half done.
        QCOMPARE(f.panel()->view()->model()->rowCount(), 0);
        QTRY_VERIFY(!f.problems()->checkPending());
        QVERIFY(f.codes().contains(QStringLiteral("missing-picture")));
        QVERIFY(f.counts().startsWith(QString::number(f.panel()->errorCount())));
    }

    void aChangeDuringACheckStartsItAgainAndTheProblemsMatchTheDocument()
    {
        ProblemsWindow f;
        f.problems()->setElementsPerSlice(1);
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(f.problems()->checkRunning());
        // Let the check come some way through the skin.
        for (int turn = 0; turn < 5; ++turn)
            QCoreApplication::processEvents();
        QVERIFY(f.problems()->checkRunning());
        SkinDocument &skin = f.window->skinDocument();
        QVERIFY(skin.addProperty("Lui_Back|EtxtBack", "template", "tplNowhere") >= 0);
        // Dropped at once, and started again once the user pauses.
        QVERIFY(!f.problems()->checkRunning());
        QVERIFY(f.problems()->checkPending());
        QTRY_VERIFY(!f.problems()->checkPending());
        QStringList shown;
        const QAbstractItemModel *model = f.panel()->view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            shown << model->index(row, ProblemListModel::CodeColumn).data().toString() + ' '
                    + model->index(row, ProblemListModel::MessageColumn).data().toString();
        }
        QStringList expected;
        for (const Problem &p : SkinChecker::check(skin.document(), skin.context(), {}, false))
            expected << p.code + ' ' + p.message;
        shown.sort();
        expected.sort();
        QCOMPARE(shown, expected);
        QVERIFY(f.codes().contains(QStringLiteral("unknown-template")));
    }

    void doubleClickSelectsTheNodeAndShowsFileAndLine()
    {
        ProblemsWindow f;
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        f.window->openSkinFile(f.skin.mainFile());
        const QModelIndex row = f.rowOf(QStringLiteral("missing-picture"));
        QVERIFY(row.isValid());
        QTreeView *view = f.panel()->view();
        view->scrollTo(row);
        const QPoint at = view->visualRect(row).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Main|EbtnOk"));
        QCOMPARE(f.window->objectTree()->nodeKey(f.tvwObjects()->currentIndex()), QByteArray("Lui_Main|EbtnOk"));
        QCOMPARE(f.window->shownNode().currentNodeKey(), QByteArray("Lui_Main|EbtnOk"));
        QCOMPARE(f.place(), QStringLiteral("main_800_480.ui:12"));
    }
};

QTEST_MAIN(TestProblemsDock)
#include "tst_problemsdock.moc"
