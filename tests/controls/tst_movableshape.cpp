// SPDX-License-Identifier: MIT
// Mouse events go through the window, as the windowing system sends them, so the
// widget under the pointer and the mouse grab decide who receives them.
#define QTEST_QPA_MOUSE_HANDLING
#include "MovableShape.h"

#include <QtTest>

// The frame is dragged with real mouse events over a container widget.
class TestMovableShape : public QObject
{
    Q_OBJECT

public:
    struct Ended
    {
        int dx = 0, dy = 0, left = 0, top = 0, width = 0, height = 0;
        int count = 0;
    };

private:
    QWidget *container = nullptr;
    QWidget *object = nullptr;
    MovableShape *shape = nullptr;
    Ended ended;
    int started = 0;

    // Drags handle `index` by (dx, dy): press at `at` (the handle's own
    // coordinates), a move in two steps, release.
    void drag(int index, QPoint at, int dx, int dy)
    {
        QWidget *handle = shape->shpMove(index);
        const QPoint start = handle->mapTo(container, at);
        QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, at);
        const QPoint half = start + QPoint(dx / 2, dy / 2);
        QTest::mouseMove(container, half);
        QTest::mouseMove(container, start + QPoint(dx, dy));
        QWidget *under = container->childAt(start + QPoint(dx, dy));
        QTest::mouseRelease(under ? under : container, Qt::LeftButton, Qt::NoModifier,
                            (under ? under : container)->mapFrom(container, start + QPoint(dx, dy)));
    }

    QPoint centreOf(int index) const { return shape->shpMove(index)->rect().center(); }

private slots:
    void init()
    {
        container = new QWidget;
        container->resize(400, 300);
        object = new QWidget(container);
        object->setGeometry(100, 80, 60, 40);
        shape = new MovableShape(container);
        shape->setRefObject(object);
        ended = Ended();
        started = 0;
        connect(shape, &MovableShape::StartMove, this, [this] { ++started; });
        connect(shape, &MovableShape::EndResize, this,
                [this](int dx, int dy, int &left, int &top, int &width, int &height) {
                    ended = Ended { dx, dy, left, top, width, height, ended.count + 1 };
                });
        container->show();
        QVERIFY(QTest::qWaitForWindowExposed(container));
    }
    void cleanup()
    {
        delete container;
        container = nullptr;
    }

    void newFrameIsUnlockedWithoutGrid()
    {
        MovableShape fresh;
        QCOMPARE(fresh.LockWidthResize(), false);
        QCOMPARE(fresh.LockHeightResize(), false);
        QCOMPARE(fresh.GridAlignSize(), 0);
        QVERIFY(fresh.RefObject() == nullptr);
    }

    void refObjectPlacesTheFrameOneHandleOutside()
    {
        const int s = shape->handleSize();
        QCOMPARE(s, shape->shpMove(1)->width());
        QCOMPARE(shape->geometry(), QRect(100 - s, 80 - s, 60 + 2 * s, 40 + 2 * s));
        QCOMPARE(shape->RefObject(), object);
    }

    void propertiesRoundTripThroughTheBag()
    {
        object->setObjectName(QStringLiteral("pctObject"));
        shape->setLockWidthResize(true);
        shape->setGridAlignSize(8);
        QVariantMap bag;
        shape->WriteProperties(bag);
        QCOMPARE(bag.keys().size(), 4);
        QCOMPARE(bag.value("RefObject").toString(), QStringLiteral("pctObject"));
        QCOMPARE(bag.value("LockWidthResize").toBool(), true);
        QCOMPARE(bag.value("GridAlignSize").toInt(), 8);

        MovableShape *other = new MovableShape(container);
        other->setLockHeightResize(true);
        other->ReadProperties(bag);
        QCOMPARE(other->RefObject(), object);
        QCOMPARE(other->LockWidthResize(), true);
        QCOMPARE(other->LockHeightResize(), false); // not in the bag: its default
        QCOMPARE(other->GridAlignSize(), 8);

        other->ReadProperties(QVariantMap());
        QCOMPARE(other->GridAlignSize(), 0);
        QCOMPARE(other->LockWidthResize(), false);
    }

    void pressAndReleaseWithoutMovementReportZeroDistances()
    {
        const QRect before = shape->geometry();
        QTest::mouseClick(shape->shpMove(MovableShape::BodyHandle), Qt::LeftButton,
                          Qt::NoModifier, QPoint(20, 20));
        QCOMPARE(started, 1);
        QCOMPARE(ended.count, 1);
        QCOMPARE(ended.dx, 0);
        QCOMPARE(ended.dy, 0);
        QCOMPARE(QRect(ended.left, ended.top, ended.width, ended.height), before);
        QCOMPARE(shape->geometry(), before);
        QVERIFY(!shape->isMoving());
    }

    void rightButtonDoesNothing()
    {
        QTest::mouseClick(shape->shpMove(MovableShape::BodyHandle), Qt::RightButton,
                          Qt::NoModifier, QPoint(20, 20));
        QCOMPARE(started, 0);
        QCOMPARE(ended.count, 0);
    }

    void draggingEachHandle_data()
    {
        QTest::addColumn<int>("handle");
        QTest::addColumn<QPoint>("delta");
        QTest::addColumn<QRect>("change"); // added to left, top, width, height
        QTest::newRow("0 top-left") << 0 << QPoint(-10, -6) << QRect(-10, -6, 10, 6);
        QTest::newRow("1 top") << 1 << QPoint(15, -6) << QRect(0, -6, 0, 6);
        QTest::newRow("2 top-right") << 2 << QPoint(10, 6) << QRect(0, 6, 10, -6);
        QTest::newRow("3 left") << 3 << QPoint(8, 20) << QRect(8, 0, -8, 0);
        QTest::newRow("4 right") << 4 << QPoint(12, 20) << QRect(0, 0, 12, 0);
        QTest::newRow("5 bottom-left") << 5 << QPoint(-4, 10) << QRect(-4, 0, 4, 10);
        QTest::newRow("6 bottom") << 6 << QPoint(20, 14) << QRect(0, 0, 0, 14);
        QTest::newRow("7 bottom-right") << 7 << QPoint(10, 12) << QRect(0, 0, 10, 12);
        QTest::newRow("8 body") << 8 << QPoint(-30, 24) << QRect(-30, 24, 0, 0);
    }
    void draggingEachHandle()
    {
        QFETCH(int, handle);
        QFETCH(QPoint, delta);
        QFETCH(QRect, change);
        const QRect before = shape->geometry();
        const QPoint at = handle == 8 ? QPoint(20, 20) : centreOf(handle);
        drag(handle, at, delta.x(), delta.y());
        const QRect expected(before.x() + change.x(), before.y() + change.y(),
                             before.width() + change.width(), before.height() + change.height());
        QCOMPARE(shape->geometry(), expected);
        QCOMPARE(started, 1);
        QCOMPARE(ended.count, 1);
        QCOMPARE(ended.dx, expected.x() - before.x());
        QCOMPARE(ended.dy, expected.y() - before.y());
        QCOMPARE(QRect(ended.left, ended.top, ended.width, ended.height), expected);
    }

    void gridSnapsThePressPointDown()
    {
        // A press at x = 13 is taken as x = 8; a move to x = 17 (snapped to
        // 16) is then one full step of 8, and nothing less.
        shape->setGridAlignSize(8);
        const QRect before = shape->geometry();
        QWidget *body = shape->shpMove(MovableShape::BodyHandle);
        QTest::mousePress(body, Qt::LeftButton, Qt::NoModifier, QPoint(13, 13));
        QTest::mouseMove(container, body->mapTo(container, QPoint(17, 13)));
        QCOMPARE(shape->geometry().topLeft(), before.topLeft() + QPoint(8, 0));
        QVERIFY(shape->isMoving());
        QTest::mouseRelease(body, Qt::LeftButton, Qt::NoModifier, QPoint(9, 13));
        QCOMPARE(ended.dx, 8);
        QCOMPARE(ended.dy, 0);
    }

    void gridIgnoresMovesWithinOneStep()
    {
        shape->setGridAlignSize(8);
        const QRect before = shape->geometry();
        QWidget *body = shape->shpMove(MovableShape::BodyHandle);
        QTest::mousePress(body, Qt::LeftButton, Qt::NoModifier, QPoint(17, 17));
        QTest::mouseMove(container, body->mapTo(container, QPoint(23, 22)));
        QCOMPARE(shape->geometry(), before);
        QVERIFY(!shape->isMoving());
        QTest::mouseRelease(body, Qt::LeftButton, Qt::NoModifier, QPoint(23, 22));
        QCOMPARE(ended.dx, 0);
    }

    void lockedWidthHoldsForRightHandles_data()
    {
        QTest::addColumn<int>("handle");
        QTest::newRow("4 right") << 4;
        QTest::newRow("7 bottom-right") << 7;
    }
    void lockedWidthHoldsForRightHandles()
    {
        QFETCH(int, handle);
        shape->setLockWidthResize(true);
        const QRect before = shape->geometry();
        drag(handle, centreOf(handle), 25, 0);
        QCOMPARE(shape->width(), before.width());
        QCOMPARE(shape->geometry(), before);
        QCOMPARE(ended.width, before.width());
    }

    void lockedHeightHoldsForTheBottomHandle()
    {
        shape->setLockHeightResize(true);
        const QRect before = shape->geometry();
        drag(6, centreOf(6), 0, 30);
        QCOMPARE(shape->geometry(), before);
    }

    void lockedWidthMovesTheLeftCornerWithoutResizing()
    {
        shape->setLockWidthResize(true);
        const QRect before = shape->geometry();
        drag(0, centreOf(0), -10, -6);
        QCOMPARE(shape->geometry(), QRect(before.x() - 10, before.y() - 6, before.width(),
                                          before.height() + 6));
    }

    void lockedAxisHoldsTheTopAndLeftEdgeHandles()
    {
        shape->setLockWidthResize(true);
        shape->setLockHeightResize(true);
        const QRect before = shape->geometry();
        drag(3, centreOf(3), 12, 0);
        QCOMPARE(shape->geometry(), before);
        drag(1, centreOf(1), 0, 12);
        QCOMPARE(shape->geometry(), before);
    }

    void hostMayCorrectTheResult()
    {
        disconnect(shape, &MovableShape::EndResize, this, nullptr);
        connect(shape, &MovableShape::EndResize, this,
                [](int, int, int &left, int &top, int &width, int &height) {
                    left = 10;
                    top = 20;
                    width = 30;
                    height = 40;
                });
        drag(8, QPoint(20, 20), 5, 5);
        QCOMPARE(shape->geometry(), QRect(10, 20, 30, 40));
    }

    void frameDoesNotShrinkBelowItsHandles()
    {
        const QRect before = shape->geometry();
        drag(3, centreOf(3), 200, 0);
        QCOMPARE(shape->width(), 2 * shape->handleSize());
        QCOMPARE(shape->geometry().right(), before.right());
    }
};

QTEST_MAIN(TestMovableShape)
#include "tst_movableshape.moc"
