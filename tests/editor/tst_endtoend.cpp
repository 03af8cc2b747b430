// SPDX-License-Identifier: MIT
// Opens the demo skin in the main window, selects an object, saves the skin under
// a new name and checks the file against what `korvi format` writes for the
// same skin file with the same shared files.
#include "ShownNode.h"
#include "EditorFixture.h"

#include "MovableShape.h"
#include "ObjectTreeModel.h"
#include "PowGrid.h"

#include <QProcess>

class TestEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void openSelectSaveGivesWhatTheFormatterWrites()
    {
        const QString ui = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin/800_480/ui");
        QTemporaryDir out;
        EditorFixture f;
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));

        f.dialogs.answerPath(ui + "/main_800_480.ui");
        f.window->button("Open")->trigger();
        f.window->selectNode(f.window->objectTree()->indexOfKey("Lui_Main|EbtnMap"));
        QCOMPARE(f.window->shownNode().currentObject()->strName(), QByteArray("btnMap"));
        QVERIFY(f.mshObject()->isVisible());
        QVERIFY(f.pgrProperty()->Items()->Count() > 0);

        const QString saved = out.filePath("renamed_800_480.ui");
        f.dialogs.answerPath(saved);
        f.window->button("Save")->trigger();
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("Saving complete"));
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <renamed_800_480.ui>"));

        const QString formatted = out.filePath("formatted.ui");
        QProcess korvi;
        korvi.start(QStringLiteral(KORVI_TOOL),
                    { "format", "-i", ui + "/templates_buttons.ui", "-i", ui + "/templates_lists.ui", "-i",
                      ui + "/../main_scheme.ui", ui + "/main_800_480.ui", formatted });
        QVERIFY(korvi.waitForFinished(30000));
        QCOMPARE(korvi.exitCode(), 0);
        const QByteArray expected = readTestFile(formatted);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(readTestFile(saved), expected);
    }
};

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
