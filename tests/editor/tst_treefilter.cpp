// SPDX-License-Identifier: MIT
// The filter field above the object tree, typed into as a user does.

#include "EditorFixture.h"

#include "ObjectTreeModel.h"
#include "SkinDocument.h"

#include <QLineEdit>

namespace {

const QByteArray kSkin = "<LAYER ui_Main>\r\n"
                         "\t<TEXT txtTitle x=5 y=5 text=Title>\r\n"
                         "\t<BUTTON btnOk x=300 y=200>\r\n"
                         "</LAYER>\r\n"
                         "<LAYER ui_Other>\r\n"
                         "\t<TEXT txtNote x=5 y=50>\r\n"
                         "\t<SPRITE sprLogo x=1>\r\n"
                         "</LAYER>\r\n";

struct FilterFixture : EditorFixture
{
    QTemporaryDir skinFolder;

    FilterFixture()
    {
        const QString file = skinFolder.path() + "/800_480/ui/filter_800_480.ui";
        QVERIFY(writeTestFile(file, kSkin));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->openSkinFile(file);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    ObjectTreeModel &tree() { return *window->objectTree(); }
    QLineEdit *field() { return control<QLineEdit>("txtTreeFilter"); }

    // Whether the node is there to see: none of the nodes above it is hidden
    // or folded.
    bool shown(const QByteArray &key)
    {
        const QModelIndex node = tree().indexOfKey(key);
        if (!node.isValid())
            return false;
        for (QModelIndex at = node; at.isValid(); at = at.parent()) {
            if (tvwObjects()->isRowHidden(at.row(), at.parent()))
                return false;
            if (at != node && !tvwObjects()->isExpanded(at))
                return false;
        }
        return true;
    }

    void type(const QString &text)
    {
        QTest::keyClicks(field(), text);
    }
};

} // namespace

class tst_TreeFilter : public QObject
{
    Q_OBJECT

private slots:
    void ctrlFPutsTheCursorInTheField()
    {
        FilterFixture f;
        f.tvwObjects()->setFocus();
        QTest::keyClick(f.tvwObjects(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(f.field()->hasFocus());
    }

    void aNameShowsTheMatchingNodeWithItsParents()
    {
        FilterFixture f;
        f.field()->setFocus();
        f.type(QStringLiteral("BTNOK"));
        QVERIFY(f.shown("Lui_Main"));
        QVERIFY(f.shown("Lui_Main|EbtnOk"));
        QVERIFY(!f.shown("Lui_Main|EtxtTitle"));
        QVERIFY(!f.shown("Lui_Main|Px"));
        QVERIFY(!f.shown("Lui_Other"));
    }

    void aTypeShowsEveryElementOfIt()
    {
        FilterFixture f;
        f.field()->setFocus();
        f.type(QStringLiteral("text"));
        QVERIFY(f.shown("Lui_Main|EtxtTitle"));
        QVERIFY(f.shown("Lui_Other|EtxtNote"));
        QVERIFY(!f.shown("Lui_Other|EsprLogo"));
        // The properties of a match stay under it.
        f.tvwObjects()->expand(f.tree().indexOfKey("Lui_Main|EtxtTitle"));
        QVERIFY(f.shown("Lui_Main|EtxtTitle|Ptext"));
    }

    void nodesNeverUnfoldedAreFound()
    {
        FilterFixture f;
        QVERIFY(!f.tvwObjects()->isExpanded(f.tree().indexOfKey("Lui_Other")));
        f.field()->setFocus();
        f.type(QStringLiteral("logo"));
        QVERIFY(f.shown("Lui_Other|EsprLogo"));
    }

    void clearingGivesBackTheTreeAndKeepsTheSelection()
    {
        FilterFixture f;
        f.field()->setFocus();
        f.type(QStringLiteral("note"));
        const QModelIndex note = f.tree().indexOfKey("Lui_Other|EtxtNote");
        const QPoint at = f.tvwObjects()->visualRect(note).center();
        QTest::mouseClick(f.tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Other|EtxtNote"));
        f.field()->setFocus();
        f.field()->selectAll();
        QTest::keyClick(f.field(), Qt::Key_Backspace);
        QVERIFY(f.shown("Lui_Main"));
        QVERIFY(f.shown("Lui_Other|EsprLogo"));
        QVERIFY(!f.tvwObjects()->isExpanded(f.tree().indexOfKey("Lui_Main")));
        QCOMPARE(f.window->skinDocument().currentKey(), QByteArray("Lui_Other|EtxtNote"));
        QCOMPARE(f.tvwObjects()->currentIndex(), f.tree().indexOfKey("Lui_Other|EtxtNote"));
        QVERIFY(f.shown("Lui_Other|EtxtNote"));
    }
};

QTEST_MAIN(tst_TreeFilter)
#include "tst_treefilter.moc"
