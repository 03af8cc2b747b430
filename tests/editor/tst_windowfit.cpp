// SPDX-License-Identifier: MIT
// The window on a first start: on a laptop's screen of 1366 x 768 it fills
// the screen, on a roomy one (1920 x 1080) it takes most of it in the
// middle; either way the status bar is on the screen, and the property grid
// shows at least ten rows beside a canvas with room. The bars and panels are
// where the user left them at the next start. Under the offscreen platform
// the test gives itself the screen: 1366 x 768, or the size KORVI_TEST_SCREEN
// names ("1920x1080"), so that one program tries both.

#include "EditorFixture.h"

#include "EditorSettings.h"
#include "ObjectTreeModel.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "clsPowGridItems.h"

#include <QApplication>
#include <QDockWidget>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>

namespace {

// A skin whose object has more properties than ten rows show.
const QByteArray kSkin = "<LAYER ui_Main>\r\n"
                         "\t<BUTTON btnMany x=10 y=20 w=100 h=40 z=1 text=Many font=Arial fontsize=12 align=center "
                         "valign=top color=#FFFFFF bmp=a.bmp padding=2 onrelease='Back' hide>\r\n"
                         "</LAYER>\r\n";

// The offscreen screen's size: KORVI_TEST_SCREEN ("1920x1080"), else a laptop's.
QSize testScreenSize()
{
    const QByteArrayList size = qgetenv("KORVI_TEST_SCREEN").split('x');
    if (size.size() == 2 && size.at(0).toInt() > 0 && size.at(1).toInt() > 0)
        return QSize(size.at(0).toInt(), size.at(1).toInt());
    return QSize(1366, 768);
}

// A window on a first start: no settings kept, no size given.
struct FirstStart : EditorFixture
{
    QTemporaryDir skinFolder;

    FirstStart()
        : EditorFixture(Size::ChosenOnAFirstStart)
    {
        show();
    }

    void show()
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    void openAndSelect()
    {
        const QString file = skinFolder.path() + "/800_480/ui/many_800_480.ui";
        QVERIFY(writeTestFile(file, kSkin));
        window->openSkinFile(file);
        window->selectNode(window->objectTree()->indexOfKey("Lui_Main|EbtnMany"));
    }
};

} // namespace

class TestWindowFit : public QObject
{
    Q_OBJECT

private slots:
    void aFirstStartFitsTheScreenWithTenGridRowsAndTheStatusBar()
    {
        FirstStart f;
        const QRect free = f.window->screen()->availableGeometry();
        // Elsewhere than offscreen the test takes the host's screen as it is.
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            QCOMPARE(free.size(), testScreenSize());
        if (free.width() < 1600 || free.height() < 900) {
            // Maximised on a screen smaller than 1600 x 900: every pixel counts.
            QTRY_VERIFY(f.window->isMaximized());
        } else {
            // On a roomy screen, a window of 85 % of it in its middle, which
            // leaves the desktop in sight around it.
            QVERIFY(!f.window->isMaximized());
            const QRect window = f.window->geometry();
            QVERIFY2(qAbs(window.width() - qRound(free.width() * 0.85)) <= 2
                         && qAbs(window.height() - qRound(free.height() * 0.85)) <= 2,
                     qPrintable(QStringLiteral("%1x%2").arg(window.width()).arg(window.height())));
            QVERIFY((window.center() - free.center()).manhattanLength() <= 2);
        }
        // Never larger than the screen's free area.
        // The window's own area lies on the free area. (Its frame may not:
        // Windows puts a maximised window's borders beyond the screen's edges.)
        QTRY_VERIFY2(free.contains(f.window->geometry()),
                     qPrintable(QStringLiteral("window at %1,%2 %3x%4 on %5,%6 %7x%8")
                                    .arg(f.window->geometry().x()).arg(f.window->geometry().y())
                                    .arg(f.window->geometry().width()).arg(f.window->geometry().height())
                                    .arg(free.x()).arg(free.y()).arg(free.width()).arg(free.height())));
        f.openAndSelect();
        QTest::qWait(50);
        // The status bar is on the screen, at the window's bottom.
        QStatusBar *status = f.window->statusBar();
        QVERIFY(status->isVisible());
        const QRect statusOnScreen(status->mapToGlobal(QPoint(0, 0)), status->size());
        QVERIFY2(free.contains(statusOnScreen),
                 qPrintable(QStringLiteral("status bar at %1,%2 %3x%4")
                                .arg(statusOnScreen.x()).arg(statusOnScreen.y())
                                .arg(statusOnScreen.width()).arg(statusOnScreen.height())));
        // Ten rows of the object's properties are in view.
        PowGrid *grid = f.control<PowGrid>("pgrProperty");
        QVERIFY(grid->Items()->Count() >= 10);
        QVERIFY2(grid->VisibleCells() >= 10, qPrintable(QString::number(grid->VisibleCells())));
        const QRect tenth = grid->cellRect(10, PropertyGridFiller::ColValue);
        QVERIFY(!tenth.isEmpty());
        QVERIFY(grid->rect().contains(tenth));
        // And the canvas keeps more room than the tree and the grid together.
        QWidget *canvas = f.control<QScrollArea>("canvasArea")->viewport();
        QVERIFY2(canvas->width() >= 700 && canvas->height() >= 380,
                 qPrintable(QStringLiteral("%1x%2").arg(canvas->width()).arg(canvas->height())));
    }

    void theBarsAndPanelsAreWhereTheUserLeftThemAtTheNextStart()
    {
        FirstStart f;
        Splitter *property = f.control<Splitter>("splProperty");
        Splitter *main = f.control<Splitter>("splMain");
        property->setSplitterPosition(property->SplitterPosition() + 600);
        main->setSplitterPosition(main->SplitterPosition() - 450);
        const QList<int> left = { main->SplitterPosition(), f.control<Splitter>("splInfo")->SplitterPosition(),
                                  property->SplitterPosition() };
        QDockWidget *problems = f.control<QDockWidget>("dockProblems");
        problems->close();
        QVERIFY(f.window->close());
        QCOMPARE(EditorSettings(f.settings).splitterPositions(), left);

        f.restart();
        f.show();
        QCOMPARE(f.control<Splitter>("splMain")->SplitterPosition(), left.at(0));
        QCOMPARE(f.control<Splitter>("splInfo")->SplitterPosition(), left.at(1));
        QCOMPARE(f.control<Splitter>("splProperty")->SplitterPosition(), left.at(2));
        QVERIFY(!f.control<QDockWidget>("dockProblems")->isVisible());
    }
};

// Under the offscreen platform, a screen of its own.
int main(int argc, char **argv)
{
    QTemporaryDir config;
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") {
        const QString file = config.filePath(QStringLiteral("screens.json"));
        const QSize size = testScreenSize();
        writeTestFile(file, QStringLiteral("{ \"screens\": [ { \"name\": \"screen\", \"x\": 0, \"y\": 0, "
                                           "\"width\": %1, \"height\": %2, \"logicalDpi\": 96, \"dpr\": 1 } ] }")
                                .arg(size.width())
                                .arg(size.height())
                                .toUtf8());
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.toLocal8Bit());
    }
    QApplication app(argc, argv);
    TestWindowFit test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowfit.moc"
