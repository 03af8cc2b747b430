// SPDX-License-Identifier: MIT
// The canvas with real mouse events: text objects without a picture are
// picked and dragged by their text, and a picture that cannot be decoded is
// named in the information box.

#include "ShownNode.h"
#include "EditorFixture.h"

#include "LayerRenderer.h"
#include "MovableShape.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "SkinDocument.h"

#include <QAction>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QUndoStack>
#include <QWheelEvent>

namespace {

const QByteArray kTextSkin = "<LAYER ui_Texts>\r\n"
                             "\t<TEXT txtLabel x=40 y=60 text=Speed>\r\n"
                             "\t<BUTTON btnBad x=300 y=200 bmp=btn.bmp>\r\n"
                             "</LAYER>\r\n";

struct CanvasFixture : EditorFixture
{
    QTemporaryDir skinFolder;
    QString file;

    CanvasFixture()
    {
        file = skinFolder.path() + "/800_480/ui/texts_800_480.ui";
        QVERIFY(writeTestFile(file, kTextSkin));
        QVERIFY(writeTestFile(skinFolder.path() + "/800_480/btn.bmp",
                              readTestFile(QStringLiteral(KORVI_TEST_DATA "/pictures/huge.bmp"))));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->openSkinFile(file);
    }

    clsElement *element(const QByteArray &key) { return window->objectTree()->ResolveNodeKey(key).element; }

    void select(const QByteArray &key) { window->selectNode(window->objectTree()->indexOfKey(key)); }

    DrawnBox box(const QByteArray &key) { return window->renderer().boxOf(element(key)); }
};

} // namespace

class TestCanvas : public QObject
{
    Q_OBJECT

private slots:
    void aTextWithoutAPictureIsPickedByItsText()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        const DrawnBox box = f.box("Lui_Texts|EtxtLabel");
        QVERIFY(!box.hasSize());
        QVERIFY(box.textArea.width() > 10);
        QCOMPARE(box.textArea.topLeft(), QPoint(40, 60));
        f.clickCanvas(box.textArea.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Texts|EtxtLabel"));
        QVERIFY(f.mshObject()->isVisible());
    }

    void aClickBesideTheTextPicksNothing()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        const QRect text = f.box("Lui_Texts|EtxtLabel").textArea;
        f.clickCanvas(text.bottomRight() + QPoint(5, 5));
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Texts"));
    }

    void aTextPickedByItsTextIsDraggedWithItsFrame()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        f.clickCanvas(f.box("Lui_Texts|EtxtLabel").textArea.center());
        f.dragFrame(15, -20);
        QCOMPARE(f.value("Lui_Texts|EtxtLabel|Px"), QByteArray("55"));
        QCOMPARE(f.value("Lui_Texts|EtxtLabel|Py"), QByteArray("40"));
        QCOMPARE(f.box("Lui_Texts|EtxtLabel").textArea.topLeft(), QPoint(55, 40));
        f.window->skinDocument().undoStack().undo();
        QCOMPARE(f.value("Lui_Texts|EtxtLabel|Px"), QByteArray("40"));
    }

    void theFrameOfAPickedTextSurroundsItsTextAndFollowsItsDrag()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        const QRect text = f.box("Lui_Texts|EtxtLabel").textArea;
        f.clickCanvas(text.center());
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Texts|EtxtLabel"));
        const int handle = f.mshObject()->handleSize();
        QVERIFY(f.mshObject()->isVisible());
        QCOMPARE(f.mshObject()->geometry(), f.pctTemplate()->toWidget(text).adjusted(-handle, -handle, handle, handle));

        f.dragFrame(30, 12);
        QCOMPARE(f.value("Lui_Texts|EtxtLabel|Px"), QByteArray("70"));
        QCOMPARE(f.value("Lui_Texts|EtxtLabel|Py"), QByteArray("72"));
        const QRect moved = f.box("Lui_Texts|EtxtLabel").textArea;
        QCOMPARE(moved, text.translated(30, 12));
        QCOMPARE(f.mshObject()->geometry(), f.pctTemplate()->toWidget(moved).adjusted(-handle, -handle, handle, handle));
    }

    void anUndecodablePictureIsNamedInTheInformationBoxAndDrawnAsThePlaceholder()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        const QString line = QStringLiteral("btn.bmp: not a picture (RL header says 65535 ") + QChar(0x00D7)
            + QStringLiteral(" 65535)");
        QVERIFY2(f.txtInfo()->toPlainText().contains(line), qPrintable(f.txtInfo()->toPlainText()));
        const DrawnBox box = f.box("Lui_Texts|EbtnBad");
        QCOMPARE(QRect(box.left, box.top, box.width, box.height), QRect(300, 200, 100, 50));
        // The placeholder can be picked like any picture.
        f.clickCanvas(QPoint(350, 225));
        QCOMPARE(f.window->shownNode().currentObject(), f.element("Lui_Texts|EbtnBad"));
    }

    void ctrlWheelZoomsKeepingThePointUnderTheMouse()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        auto *area = f.control<QScrollArea>("canvasArea");
        QWidget *viewport = area->viewport();
        const QPoint mouse(200, 150);
        const QPoint before = f.pctTemplate()->toCanvas(f.pctTemplate()->mapFrom(viewport, mouse));
        for (int i = 0; i < 3; ++i) {
            QWheelEvent wheel(QPointF(mouse), QPointF(viewport->mapToGlobal(mouse)), QPoint(), QPoint(0, 120),
                              Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(viewport, &wheel);
        }
        QCOMPARE(f.pctTemplate()->zoomPercent(), 300);
        QVERIFY(area->horizontalScrollBar()->value() > 0);
        const QPoint after = f.pctTemplate()->toCanvas(f.pctTemplate()->mapFrom(viewport, mouse));
        QVERIFY2((after - before).manhattanLength() <= 1,
                 qPrintable(QStringLiteral("%1,%2 became %3,%4").arg(before.x()).arg(before.y()).arg(after.x()).arg(after.y())));
    }

    void keyboardZoomKeepsTheViewsCentre()
    {
        CanvasFixture f;
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.select("Lui_Texts");
        auto *area = f.control<QScrollArea>("canvasArea");
        QWidget *viewport = area->viewport();
        // Zoomed in to 200 % and scrolled away from the top left corner.
        f.window->findChild<QAction *>(QStringLiteral("ZoomIn"))->trigger();
        f.window->findChild<QAction *>(QStringLiteral("ZoomIn"))->trigger();
        area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->maximum() / 2);
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum() / 2);
        const QPoint middle = viewport->rect().center();
        const auto underMiddle = [&] { return f.pctTemplate()->toCanvas(f.pctTemplate()->mapFrom(viewport, middle)); };
        const QPoint before = underMiddle();
        QVERIFY(before.x() > 0 && before.y() > 0);
        f.pctTemplate()->setFocus();
        QCOMPARE(f.pctTemplate()->zoomPercent(), 200);
        QTest::keyClick(f.pctTemplate(), Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(f.pctTemplate()->zoomPercent(), 300);
        QVERIFY((underMiddle() - before).manhattanLength() <= 1);
        QTest::keyClick(f.pctTemplate(), Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(f.pctTemplate()->zoomPercent(), 200);
        QVERIFY2((underMiddle() - before).manhattanLength() <= 1,
                 qPrintable(QStringLiteral("%1,%2 became %3,%4").arg(before.x()).arg(before.y()).arg(underMiddle().x()).arg(underMiddle().y())));
    }

    void theCanvasShowsWhenItHasTheFocus()
    {
        CanvasFixture f;
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.select("Lui_Texts");
        const QColor highlight = f.pctTemplate()->palette().color(QPalette::Highlight);
        // The top left corner of the part in view.
        const auto corner = [&] {
            const QPoint at = f.pctTemplate()->visibleRegion().boundingRect().topLeft();
            return f.pctTemplate()->grab().toImage().pixelColor(at);
        };
        f.tvwObjects()->setFocus();
        QVERIFY(!f.pctTemplate()->hasFocus());
        QVERIFY(corner() != highlight);
        // Tab goes on from the tree until the canvas has the focus.
        for (int i = 0; i < 12 && !f.pctTemplate()->hasFocus(); ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(f.pctTemplate()->hasFocus());
        QCOMPARE(corner(), highlight);
        f.tvwObjects()->setFocus();
        QVERIFY(corner() != highlight);
    }

    void zoomToFitShowsTheWholePicture()
    {
        CanvasFixture f;
        f.select("Lui_Texts");
        auto *area = f.control<QScrollArea>("canvasArea");
        f.window->findChild<QAction *>(QStringLiteral("ZoomIn"))->trigger();
        f.window->findChild<QAction *>(QStringLiteral("ZoomIn"))->trigger();
        QTest::keyClick(f.window.get(), Qt::Key_9, Qt::ControlModifier);
        const QSize room = area->maximumViewportSize();
        const QSize shown = f.pctTemplate()->size();
        QVERIFY(shown.width() <= room.width() && shown.height() <= room.height());
        // The next step would no longer fit.
        const int fitted = f.pctTemplate()->zoomPercent();
        f.canvas()->zoomIn();
        const QSize larger = f.pctTemplate()->size();
        QVERIFY2(larger.width() > room.width() || larger.height() > room.height(), qPrintable(QString::number(fitted)));
    }
};

QTEST_MAIN(TestCanvas)
#include "tst_canvas.moc"
