// SPDX-License-Identifier: MIT
// Mouse events go through the window, as the windowing system sends them, so the
// widget under the pointer and the mouse grab decide who receives them.
#define QTEST_QPA_MOUSE_HANDLING
#include "OleColor.h"
#include "PropertyBag.h"
#include "Splitter.h"
#include "Twips.h"

#include <QtTest>

class TestSplitter : public QObject
{
    Q_OBJECT

    QWidget *host = nullptr;
    Splitter *splitter = nullptr;
    QWidget *left = nullptr;
    QWidget *right = nullptr;

    int px(int twips) const { return Twips::toPixelsX(twips, splitter); }

    // Drags the bar by `distance` along its axis, in three moves.
    void dragBar(int distance)
    {
        QWidget *bar = splitter->lblPointer();
        const QPoint grip = bar->rect().center();
        const QPoint start = bar->mapTo(host, grip);
        QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, grip);
        const bool sideBySide = splitter->SplitterOrientation() == Splitter::SideBySide;
        for (int step = 1; step <= 3; ++step) {
            const int d = distance * step / 3;
            QTest::mouseMove(host, start + (sideBySide ? QPoint(d, 0) : QPoint(0, d)));
        }
        QTest::mouseRelease(host, Qt::LeftButton, Qt::NoModifier,
                            start + (sideBySide ? QPoint(distance, 0) : QPoint(0, distance)));
    }

private slots:
    void init()
    {
        host = new QWidget;
        host->resize(400, 300);
        splitter = new Splitter(host);
        splitter->setGeometry(0, 0, 400, 300);
        left = new QWidget;
        right = new QWidget;
        splitter->setControls(left, right);
        splitter->setSplitterPosition(Twips::fromPixelsX(150, splitter));
        host->show();
        QVERIFY(QTest::qWaitForWindowExposed(host));
    }
    void cleanup()
    {
        delete host;
        host = nullptr;
    }

    void newSplitterHasA75TwipBarAnd500TwipMinimums()
    {
        Splitter fresh;
        QCOMPARE(fresh.SplitterSize(), 75);
        QCOMPARE(fresh.ControlTopLeftMin(), 500);
        QCOMPARE(fresh.ControlBottomRightMin(), 500);
        QCOMPARE(fresh.SwapControls(), false);
        QCOMPARE(fresh.SplitterOrientation(), 0);
        QCOMPARE(fresh.SplitterPosition(), 0);
        QCOMPARE(fresh.ResizeButton(), 0);
        QCOMPARE(fresh.Collapsed(), false);
        QCOMPARE(fresh.ResizeLock(), 0);
        QCOMPARE(PropertyBag::names(fresh),
                 (QStringList { "SwapControls", "ControlTopLeftMin", "ControlBottomRightMin",
                                "SplitterOrientation", "SplitterPosition", "SplitterSize",
                                "ResizeButton", "Collapsed", "ResizeLock" }));
    }

    void propertiesRoundTripThroughTheBag()
    {
        splitter->setSplitterOrientation(1);
        splitter->setResizeButton(2);
        splitter->setControlTopLeftMin(900);
        QVariantMap bag;
        splitter->WriteProperties(bag);
        QCOMPARE(bag.size(), 9);
        Splitter other;
        other.setSplitterSize(10);
        other.ReadProperties(bag);
        QCOMPARE(other.SplitterOrientation(), 1);
        QCOMPARE(other.ResizeButton(), 2);
        QCOMPARE(other.ControlTopLeftMin(), 900);
        QCOMPARE(other.SplitterSize(), 75);
        QCOMPARE(other.SplitterPosition(), splitter->SplitterPosition());
    }

    void arrangesTheTwoSidesAroundTheBar()
    {
        const int bar = px(75);
        QCOMPARE(left->geometry(), QRect(0, 0, 150, 300));
        QCOMPARE(splitter->lblPointer()->geometry(), QRect(150, 0, bar, 300));
        QCOMPARE(right->geometry(), QRect(150 + bar, 0, 400 - 150 - bar, 300));
    }

    void oneAboveTheOther()
    {
        splitter->setSplitterOrientation(Splitter::OneAboveTheOther);
        splitter->setSplitterPosition(Twips::fromPixelsY(100, splitter));
        QCOMPARE(left->geometry(), QRect(0, 0, 400, 100));
        QCOMPARE(right->geometry().top(), 100 + Twips::toPixelsY(75, splitter));
        dragBar(40);
        QCOMPARE(left->height(), 140);
    }

    void swapControlsExchangesTheSides()
    {
        splitter->setSwapControls(true);
        QCOMPARE(right->geometry().left(), 0);
        QVERIFY(left->geometry().left() > 150);
    }

    void draggingTheBarMovesTheBoundary()
    {
        QSignalSpy resized(splitter, &Splitter::Resize);
        QSignalSpy ended(splitter, &Splitter::EndResize);
        dragBar(60);
        QCOMPARE(left->width(), 210);
        QCOMPARE(splitter->lblPointer()->x(), 210);
        QCOMPARE(resized.count(), 3);
        QCOMPARE(ended.count(), 1);
        QCOMPARE(splitter->SplitterPosition(), Twips::fromPixelsX(210, splitter));
    }

    void draggingPastAMinimumStopsAtIt()
    {
        dragBar(-140); // to 10 pixels from the left edge
        QCOMPARE(splitter->SplitterPosition(), 500);
        QCOMPARE(left->width(), px(500));
        dragBar(355); // from the left minimum to near the right edge
        const int highest = Twips::fromPixelsX(400, splitter) - 75 - 500;
        QCOMPARE(splitter->SplitterPosition(), highest);
        QCOMPARE(right->width(), 400 - px(highest) - px(75));
        QVERIFY(right->width() >= px(500) - 1);
    }

    void lockedBarDoesNotMove()
    {
        splitter->setResizeLock(1);
        dragBar(60);
        QCOMPARE(left->width(), 150);
    }

    void twoClicksOnTheButtonRestoreTheLayout()
    {
        splitter->setResizeButton(Splitter::ButtonMiddle);
        QWidget *button = splitter->pctButton();
        QVERIFY(button->isVisible());
        const QRect leftBefore = left->geometry();
        const QRect rightBefore = right->geometry();
        const QRect barBefore = splitter->lblPointer()->geometry();
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(splitter->Collapsed());
        QVERIFY(!right->isVisible());
        QCOMPARE(left->width(), 400 - px(75));
        QTest::mouseClick(splitter->pctButton(), Qt::LeftButton);
        QVERIFY(!splitter->Collapsed());
        QVERIFY(right->isVisible());
        QCOMPARE(left->geometry(), leftBefore);
        QCOMPARE(right->geometry(), rightBefore);
        QCOMPARE(splitter->lblPointer()->geometry(), barBefore);
    }

    void noButtonByDefault()
    {
        QVERIFY(!splitter->pctButton()->isVisible());
    }

    void systemColoursTranslateThroughThePalette()
    {
        const QPalette palette = splitter->palette();
        QCOMPARE(splitter->SystemColorToRGBColor(0x8000000Fu),
                 OleColor::fromColor(palette.color(QPalette::Button)));
        QCOMPARE(splitter->SystemColorToRGBColor(0x8000000Du),
                 OleColor::fromColor(palette.color(QPalette::Highlight)));
        QCOMPARE(splitter->SystemColorToRGBColor(0x00123456u), 0x00123456u);
        QCOMPARE(splitter->SystemColorToRGBColor(0x800000FFu), 0u);
    }
};

QTEST_MAIN(TestSplitter)
#include "tst_splitter.moc"
