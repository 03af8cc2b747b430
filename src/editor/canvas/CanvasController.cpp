// SPDX-License-Identifier: MIT
#include "CanvasController.h"

#include "CanvasHitTest.h"
#include "CanvasZoom.h"
#include "ChangeValueCommand.h"
#include "DragPosition.h"
#include "LayerRenderer.h"
#include "LiveDrag.h"
#include "MovableShape.h"
#include "ShownNode.h"
#include "SkinCanvas.h"
#include "SkinDocument.h"
#include "clsKorviInterface.h"

#include <QAction>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QUndoStack>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <memory>

CanvasController::CanvasController(const Widgets &widgets, LayerRenderer &renderer, SkinDocument &document,
                                   ShownNode &shown, QObject *parent)
    : QObject(parent)
    , mWidgets(widgets)
    , mRenderer(renderer)
    , mDocument(document)
    , mShown(shown)
{
    setObjectName(QStringLiteral("CanvasController"));
    auto timer = std::make_shared<QElapsedTimer>();
    timer->start();
    clock = [timer] { return timer->elapsed(); };

    mWidgets.canvas->installEventFilter(this);
    // Tab reaches the canvas as a click does; it shows that it has the focus.
    mWidgets.canvas->setFocusPolicy(Qt::StrongFocus);
    for (QScrollBar *bar : { mWidgets.area->horizontalScrollBar(), mWidgets.area->verticalScrollBar() })
        connect(bar, &QScrollBar::valueChanged, mWidgets.canvas, qOverload<>(&QWidget::update));
    mWidgets.frame->installEventFilter(this);
    mWidgets.area->viewport()->installEventFilter(this);
    connect(mWidgets.frame, &MovableShape::StartMove, this, &CanvasController::dragStarted);
    connect(mWidgets.frame, &MovableShape::EndResize, this, &CanvasController::frameReleased,
            Qt::DirectConnection);

    mZoomPanel = new QLabel(QStringLiteral("100 %"));
    mZoomPanel->setObjectName(QStringLiteral("stbZoom"));
}

void CanvasController::addZoomActions(QMenu &view)
{
    const auto add = [this, &view](const QString &name, const QString &text, const QKeySequence &keys,
                                   void (CanvasController::*slot)()) {
        QAction *action = view.addAction(text);
        action->setObjectName(name);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, slot);
    };
    add(QStringLiteral("ZoomIn"), QStringLiteral("Zoom In"), QKeySequence::ZoomIn, &CanvasController::zoomIn);
    add(QStringLiteral("ZoomOut"), QStringLiteral("Zoom Out"), QKeySequence::ZoomOut, &CanvasController::zoomOut);
    add(QStringLiteral("ZoomNormal"), QStringLiteral("Actual Size"), QKeySequence(Qt::CTRL | Qt::Key_0),
        &CanvasController::zoomNormal);
    add(QStringLiteral("ZoomToFit"), QStringLiteral("Zoom to Fit"), QKeySequence(Qt::CTRL | Qt::Key_9),
        &CanvasController::zoomToFit);
}

void CanvasController::setZoom(int percent)
{
    mWidgets.canvas->setZoomPercent(percent);
    zoomApplied();
}

// From the keyboard or the menu, the middle of the view stays where it is.
void CanvasController::zoomIn()
{
    zoomAround(mWidgets.area->viewport()->rect().center(), 1);
}

void CanvasController::zoomOut()
{
    zoomAround(mWidgets.area->viewport()->rect().center(), -1);
}

void CanvasController::zoomNormal()
{
    setZoom(CanvasZoom::Normal);
}

void CanvasController::zoomToFit()
{
    const QImage &picture = mWidgets.canvas->picture();
    if (picture.isNull())
        return;
    const QSize room = mWidgets.area->maximumViewportSize();
    const int percent = std::min(room.width() * 100 / picture.width(), room.height() * 100 / picture.height());
    setZoom(percent);
}

void CanvasController::zoomAround(QPoint viewportPoint, int steps)
{
    QScrollBar *horizontal = mWidgets.area->horizontalScrollBar();
    QScrollBar *vertical = mWidgets.area->verticalScrollBar();
    // The point in canvas pixels, with its fraction, before the zoom.
    const QPointF onCanvas = QPointF(mWidgets.canvas->mapFrom(mWidgets.area->viewport(), viewportPoint))
        * 100.0 / mWidgets.canvas->zoomPercent();
    if (steps > 0)
        mWidgets.canvas->zoomIn();
    else
        mWidgets.canvas->zoomOut();
    zoomApplied();
    const QPointF onWidget = onCanvas * mWidgets.canvas->zoomPercent() / 100.0;
    horizontal->setValue(int(std::lround(onWidget.x() - viewportPoint.x())));
    vertical->setValue(int(std::lround(onWidget.y() - viewportPoint.y())));
}

// The frame follows the object to its place at the new zoom.
void CanvasController::zoomApplied()
{
    if (mWidgets.frame->isVisible() && mShown.currentObject())
        mShown.RefreshCanvas();
    mZoomPanel->setText(QStringLiteral("%1 %").arg(mWidgets.canvas->zoomPercent()));
}

bool CanvasController::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == mWidgets.canvas) {
        if (event->type() == QEvent::MouseButtonPress) {
            auto *mouse = static_cast<QMouseEvent *>(event);
            // The object pressed on is picked, and the same press drags it.
            if (canvasPressed(mWidgets.canvas->toCanvas(mouse->position().toPoint()))
                && mouse->button() == Qt::LeftButton && mWidgets.frame->isVisible())
                mWidgets.frame->continuePressAsMove(mouse->globalPosition().toPoint());
        } else if (event->type() == QEvent::KeyPress && canvasKey(static_cast<QKeyEvent *>(event))) {
            return true;
        }
    } else if (watched == mWidgets.area->viewport() && event->type() == QEvent::Wheel) {
        auto *wheel = static_cast<QWheelEvent *>(event);
        if (wheel->modifiers().testFlag(Qt::ControlModifier)) {
            // The point under the mouse stays under it.
            if (wheel->angleDelta().y() != 0)
                zoomAround(wheel->position().toPoint(), wheel->angleDelta().y());
            return true;
        }
    } else if (watched == mWidgets.frame && event->type() == QEvent::Move) {
        if (mWidgets.frame->isMoving())
            frameMoving();
    }
    return QObject::eventFilter(watched, event);
}

bool CanvasController::canvasPressed(QPoint canvasPoint)
{
    const clsElement *layer = mShown.shownLayer();
    if (!layer)
        return false;
    const clsElement *hit = CanvasHitTest::hit(mDocument.document(), layer, mRenderer, canvasPoint);
    if (!hit)
        return false;
    mDocument.setCurrent(mRenderer.nodeKeyOf(hit));
    return mShown.currentObject() == hit;
}

bool CanvasController::canMoveWithKeys() const
{
    return mShown.currentObject() && mWidgets.frame->isVisible() && !mWidgets.lock->isChecked();
}

bool CanvasController::canvasKey(QKeyEvent *event)
{
    // With Ctrl or Alt an arrow is a command of the window (Ctrl+Shift+Up
    // moves the object in the order); it reaches the canvas when that
    // command has nowhere to go, and must not nudge instead.
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    int dx = 0;
    int dy = 0;
    switch (event->key()) {
    case Qt::Key_Left: dx = -1; break;
    case Qt::Key_Right: dx = 1; break;
    case Qt::Key_Up: dy = -1; break;
    case Qt::Key_Down: dy = 1; break;
    default: return false;
    }
    if (!canMoveWithKeys())
        return false;
    const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? 10 : 1;
    moveCurrentBy(dx * step, dy * step);
    return true;
}

// The object's place is read as it is drawn, through its templates, so that an
// object placed by its template gets its own "x" and "y" where it was dropped.
void CanvasController::moveCurrentBy(int dx, int dy)
{
    const clsElement *object = mShown.currentObject();
    if (!object)
        return;
    const clsKorviInterface &document = mDocument.document();
    const std::optional<DragPosition> moved = DragPosition::moved(
        document.GetElementValue("x", object), document.GetElementValue("y", object), dx, dy);
    if (!moved)
        return;
    mDocument.undoStack().push(
        new MoveElementCommand(mDocument, mShown.currentNodeKey(), moved->x, moved->y, clock()));
}

void CanvasController::frameReleased(int dx, int dy, int &left, int &top, int &width, int &height)
{
    forgetDrag();
    // Only the distance counts; the frame's size handles change nothing.
    const QPoint distance = mWidgets.canvas->toCanvasDistance(QPoint(dx, dy));
    // A press released where it began (a click that picked the object) moves nothing.
    if (mShown.currentObject() && !distance.isNull())
        moveCurrentBy(distance.x(), distance.y());
    // The frame stays where the redraw put it.
    const QRect frame = mWidgets.frame->geometry();
    left = frame.x();
    top = frame.y();
    width = frame.width();
    height = frame.height();
}

void CanvasController::forgetDrag()
{
    mDragged = nullptr;
    mDragBackground = QImage();
}

void CanvasController::dragStarted()
{
    mDragStart = mWidgets.frame->pos();
    mDragged = mShown.currentObject();
    mDragBackground = QImage();
}

void CanvasController::frameMoving()
{
    const clsElement *layer = mShown.shownLayer();
    const QImage &picture = mWidgets.canvas->picture();
    if (!mDragged || !layer || picture.isNull())
        return;
    if (mDragBackground.isNull())
        mDragBackground = LiveDrag::pictureWithout(mRenderer, layer, mDragged, picture.size());
    const QPoint distance = mWidgets.canvas->toCanvasDistance(mWidgets.frame->pos() - mDragStart);
    mWidgets.canvas->setPicture(LiveDrag::pictureWith(mRenderer, mDragBackground, mDragged, distance));
}
