// SPDX-License-Identifier: MIT
#include "ChangeValueCommand.h"
#include "EditorFixture.h"
#include "ObjectTreeModel.h"
#include "ReloadBar.h"
#include "SkinDocument.h"
#include "UndoCommandId.h"
#include "clsElement.h"
#include "clsProperties.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QUndoStack>
#include <QUrl>

// What happens to the open skin from outside the editor: a file or folder
// dropped on the window, and the skin's files changed or deleted on disk.
namespace {

struct OutsideWindow : EditorFixture
{
    SmallSkin skin;

    OutsideWindow()
    {
        window->show();
        if (!QTest::qWaitForWindowExposed(window.get()))
            qFatal("the window is not shown");
    }

    ReloadBar *bar() const { return control<ReloadBar>("reloadBar"); }
    QString statusMessage() const { return control<QStatusBar>("stbMain")->currentMessage(); }
    SkinDocument &doc() const { return window->skinDocument(); }

    QByteArray valueOf(const QByteArray &elementKey, const char *property) const
    {
        const clsElement *element = doc().elementAt(elementKey);
        return element ? element->Properties().Item(property).value() : QByteArray("<gone>");
    }

    // Drags the item over the window and drops it; whether the drop was taken.
    bool drop(const QString &path)
    {
        QMimeData data;
        data.setUrls({ QUrl::fromLocalFile(path) });
        const QPoint at = window->rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped(QPointF(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &dropped);
        return dropped.isAccepted();
    }

    // An edit the history holds, so that the skin has unsaved changes.
    void editBackText(const QByteArray &text)
    {
        doc().undoStack().push(new ChangeValueCommand(doc(), "Lui_Back|EtxtBack", { { "text", text } },
                                                      "Lui_Back|EtxtBack",
                                                      ChangeValueCommand::Options{ UndoCommandId::SetPropertyValue }));
        QVERIFY(!doc().undoStack().isClean());
    }

    // Another program rewrites the main file with the title's text changed.
    void rewriteTitleOnDisk(const QByteArray &from, const QByteArray &title)
    {
        QFile file(skin.mainFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        file.close();
        const qsizetype at = bytes.indexOf("text=" + from + ' ');
        const qsizetype end = bytes.indexOf(' ', at);
        QVERIFY(at > 0 && end > at);
        bytes.replace(at, end - at, "text=" + title);
        QVERIFY(writeTestFile(skin.mainFile(), bytes));
    }

    void click(const char *buttonName)
    {
        QPushButton *button = control<QPushButton>(buttonName);
        QVERIFY(button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
    }
};

} // namespace

class TestOutsideChanges : public QObject
{
    Q_OBJECT

private slots:
    void droppingAUiFileOpensItAsOpenDoes()
    {
        OutsideWindow f;
        QVERIFY(f.drop(f.skin.mainFile()));
        QVERIFY(f.title().endsWith(QStringLiteral("<main_800_480.ui>")));
        QVERIFY(f.doc().elementAt("Lui_Main"));
        // The template file beside it is read as Open reads it.
        QVERIFY(f.document.Templates().ItemExist("tplShared"));
        QVERIFY(f.window->button(QStringLiteral("Save"))->isEnabled());
    }

    void droppingAFolderOpensItAsAllDoes()
    {
        OutsideWindow f;
        QVERIFY(f.drop(f.skin.uiFolder()));
        QVERIFY(f.title().endsWith(QStringLiteral("<%1>").arg(f.skin.uiFolder())));
        // All reads the common files too.
        QVERIFY(f.doc().elementAt("Lui_Common"));
    }

    void somethingElseDroppedIsRefused()
    {
        OutsideWindow f;
        QVERIFY(writeTestFile(f.skin.uiFolder() + "/picture.bmp", "BM"));
        QVERIFY(!f.drop(f.skin.uiFolder() + "/picture.bmp"));
        QVERIFY(!f.doc().elementAt("Lui_Main"));
    }

    void aDropAsksFirstAboutUnsavedChanges()
    {
        OutsideWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        f.editBackText("Front");
        f.dialogs.answerButton(Dialogs::Button::Cancel);
        f.drop(f.skin.uiFolder());
        QCOMPARE(f.dialogs.asked().size(), 1);
        QVERIFY(f.dialogs.asked().first().text.contains(QStringLiteral("unsaved changes")));
        // Cancelled: the skin and its change are still there.
        QVERIFY(!f.doc().elementAt("Lui_Common"));
        QCOMPARE(f.valueOf("Lui_Back|EtxtBack", "text"), QByteArray("Front"));

        f.dialogs.answerButton(Dialogs::Button::No);
        f.drop(f.skin.uiFolder());
        QVERIFY(f.doc().elementAt("Lui_Common"));
    }

    void aChangeOnDiskIsReadAtOnceKeepingTheView()
    {
        OutsideWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        ObjectTreeModel *tree = f.window->objectTree();
        f.tvwObjects()->expand(tree->indexOfKey("Lui_Back"));
        f.doc().setCurrent("Lui_Main|EtxtTitle");
        QVERIFY(!f.tvwObjects()->isExpanded(tree->indexOfKey("Lui_Common")));

        f.rewriteTitleOnDisk("Title", "Renamed");
        QTRY_COMPARE(f.valueOf("Lui_Main|EtxtTitle", "text"), QByteArray("Renamed"));
        QCOMPARE(f.doc().currentKey(), QByteArray("Lui_Main|EtxtTitle"));
        QCOMPARE(tree->nodeKey(f.tvwObjects()->currentIndex()), QByteArray("Lui_Main|EtxtTitle"));
        QVERIFY(f.tvwObjects()->isExpanded(tree->indexOfKey("Lui_Back")));
        QVERIFY(f.tvwObjects()->isExpanded(tree->indexOfKey("Lui_Main")));
        QVERIFY(f.statusMessage().contains(QStringLiteral("main_800_480.ui changed on disk")));
        QVERIFY(f.bar()->isHidden());
        QVERIFY(f.doc().undoStack().isClean());
    }

    void aChangeOnDiskWithUnsavedChangesAsksFirst()
    {
        OutsideWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        f.editBackText("Front");
        f.rewriteTitleOnDisk("Title", "Renamed");
        QTRY_VERIFY(!f.bar()->isHidden());
        QVERIFY(f.bar()->text().contains(QStringLiteral("main_800_480.ui changed on disk")));
        // Nothing is read until the user says so.
        QCOMPARE(f.valueOf("Lui_Main|EtxtTitle", "text"), QByteArray("Title"));

        f.click("btnKeep");
        QVERIFY(f.bar()->isHidden());
        QCOMPARE(f.valueOf("Lui_Back|EtxtBack", "text"), QByteArray("Front"));
        QCOMPARE(f.valueOf("Lui_Main|EtxtTitle", "text"), QByteArray("Title"));

        f.rewriteTitleOnDisk("Renamed", "Again");
        QTRY_VERIFY(!f.bar()->isHidden());
        f.click("btnReload");
        QVERIFY(f.bar()->isHidden());
        QCOMPARE(f.valueOf("Lui_Main|EtxtTitle", "text"), QByteArray("Again"));
        QCOMPARE(f.valueOf("Lui_Back|EtxtBack", "text"), QByteArray("Back"));
        QVERIFY(f.doc().undoStack().isClean());
    }

    void aDeletedFileIsReportedAndNotRecreated()
    {
        OutsideWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        const QString templates = f.skin.uiFolder() + "/templates_a.ui";
        QVERIFY(QFile::remove(templates));
        QTRY_VERIFY(!f.bar()->isHidden());
        QVERIFY(f.bar()->text().contains(QStringLiteral("templates_a.ui deleted on disk")));
        // Asked, even without unsaved changes: the skin is as it was.
        QVERIFY(f.document.Templates().ItemExist("tplShared"));
        f.click("btnKeep");
        QVERIFY(f.document.Templates().ItemExist("tplShared"));
        QVERIFY(!QFile::exists(templates));

        // Reading the skin again goes without the deleted file, and writes nothing.
        QVERIFY(QFile::remove(f.skin.mainFile()));
        QTRY_VERIFY(!f.bar()->isHidden());
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.click("btnReload");
        QVERIFY(!f.document.Templates().ItemExist("tplShared"));
        QVERIFY(!QFile::exists(templates));
        QVERIFY(!QFile::exists(f.skin.mainFile()));
    }

    void savingIsNoChangeFromOutside()
    {
        OutsideWindow f;
        f.window->openSkinFile(f.skin.mainFile());
        f.editBackText("Front");
        f.dialogs.answerPath(f.skin.mainFile());
        f.dialogs.answerButton(Dialogs::Button::Yes);
        f.dialogs.answerButton(Dialogs::Button::Ok);
        f.window->SaveCommand();
        QVERIFY(f.doc().undoStack().isClean());
        // Longer than the watcher lets a file settle.
        QTest::qWait(600);
        QVERIFY(f.bar()->isHidden());
        QVERIFY(!f.statusMessage().contains(QStringLiteral("changed on disk")));
        QCOMPARE(f.valueOf("Lui_Back|EtxtBack", "text"), QByteArray("Front"));
    }
};

QTEST_MAIN(TestOutsideChanges)
#include "tst_outsidechanges.moc"
