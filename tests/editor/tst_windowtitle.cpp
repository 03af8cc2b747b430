// SPDX-License-Identifier: MIT
// The window title carries Qt's modified marker while the skin has changes
// that are not saved: set by an edit, cleared by undoing it, by Save Changes,
// by Save As and by opening a skin; the title's text stays as it was.

#include "ShownNode.h"
#include "EditorFixture.h"

#include "LayerRenderer.h"

#include <QUndoStack>

namespace {

struct TitleFixture : EditorFixture
{
    SmallSkin skin;

    TitleFixture()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    // A shortcut reaches a window only while it is the active one, and a
    // window that another test shows on the same display (tests run two at a
    // time) may have just taken that place: the window is made active first.
    void pressCtrl(Qt::Key key, Qt::KeyboardModifiers more = Qt::NoModifier)
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.get(), key, Qt::ControlModifier | more);
    }

    // The button picked on the canvas of its layer and moved one pixel with
    // the arrow key.
    void moveButtonWithTheKeyboard()
    {
        const QPoint at = tvwObjects()->visualRect(node("Lui_Main")).center();
        QTest::mouseClick(tvwObjects()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        const clsElement *button = tree().ResolveNodeKey("Lui_Main|EbtnOk").element;
        const DrawnBox box = window->renderer().boxOf(button);
        clickCanvas(QPoint(box.left + box.width / 2, box.top + box.height / 2));
        QCOMPARE(window->shownNode().currentObject(), button);
        QTest::keyClick(pctTemplate(), Qt::Key_Right);
    }
};

} // namespace

class TestWindowTitle : public QObject
{
    Q_OBJECT

private slots:
    void anEditMarksTheTitleAndUndoingItClearsTheMark()
    {
        TitleFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        QVERIFY(f.window->windowTitle().contains(QStringLiteral("[*]")));
        QVERIFY(!f.window->isWindowModified());
        f.moveButtonWithTheKeyboard();
        QVERIFY(!f.stack().isClean());
        QVERIFY(f.window->isWindowModified());
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main_800_480.ui>"));
        f.pressCtrl(Qt::Key_Z);
        QVERIFY(f.stack().isClean());
        QVERIFY(!f.window->isWindowModified());
    }

    void saveChangesClearsTheMark()
    {
        TitleFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.moveButtonWithTheKeyboard();
        QVERIFY(f.window->isWindowModified());
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S);
        QVERIFY(readTestFile(f.skin.mainFile()).contains("btnOk x=301"));
        QVERIFY(!f.window->isWindowModified());
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main_800_480.ui>"));
    }

    void saveAsClearsTheMarkUnderTheNewName()
    {
        TitleFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.moveButtonWithTheKeyboard();
        const QString target = f.skin.uiFolder() + "/copy_800_480.ui";
        f.dialogs.answerPath(target);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.pressCtrl(Qt::Key_S, Qt::ShiftModifier);
        QVERIFY(QFile::exists(target));
        QVERIFY(!f.window->isWindowModified());
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <copy_800_480.ui>"));
    }

    void openingASkinClearsTheMark()
    {
        TitleFixture f;
        f.window->openSkinFile(f.skin.mainFile());
        f.moveButtonWithTheKeyboard();
        QVERIFY(f.window->isWindowModified());
        // Asked whether to save first: No, the change is dropped.
        f.dialogs.answerButton(Dialogs::Button::No);
        f.dialogs.answerPath(f.skin.mainFile());
        f.pressCtrl(Qt::Key_O);
        QVERIFY(f.stack().isClean());
        QVERIFY(!f.window->isWindowModified());
        QCOMPARE(f.title(), QStringLiteral("Korvi8 Template Editor <main_800_480.ui>"));
        QVERIFY(readTestFile(f.skin.mainFile()).contains("btnOk x=300"));
    }
};

QTEST_MAIN(TestWindowTitle)
#include "tst_windowtitle.moc"
