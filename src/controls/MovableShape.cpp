// SPDX-License-Identifier: MIT
#include "MovableShape.h"

#include "MoveHandle.h"
#include "PropertyBag.h"

#include <QPainter>

MovableShape::MovableShape(QWidget *parent)
    : QWidget(parent)
{
    for (int i = 0; i < HandleCount; ++i)
        mHandles[size_t(i)] = new MoveHandle(i, this);
    // The body lies under the eight small handles.
    mHandles[BodyHandle]->lower();
    resize(8 * DefaultHandleSize, 8 * DefaultHandleSize);
    layoutHandles();
}

void MovableShape::setRefObject(QWidget *New_RefObject)
{
    mRefObject = New_RefObject;
    if (!New_RefObject)
        return;
    raise();
    const int size = handleSize();
    const QRect object = New_RefObject->geometry();
    setGeometry(object.x() - size, object.y() - size, object.width() + 2 * size,
                object.height() + 2 * size);
}

void MovableShape::InitProperties()
{
    mRefObject = nullptr;
    mLockWidthResize = false;
    mLockHeightResize = false;
    mGridAlignSize = 0;
}

void MovableShape::ReadProperties(const QVariantMap &bag)
{
    InitProperties();
    PropertyBag::read(*this, bag);
}

void MovableShape::WriteProperties(QVariantMap &bag) const
{
    PropertyBag::write(*this, bag);
}

void MovableShape::ReadProperties(QSettings &settings)
{
    InitProperties();
    PropertyBag::read(*this, settings);
}

void MovableShape::WriteProperties(QSettings &settings) const
{
    PropertyBag::write(*this, settings);
}

QWidget *MovableShape::shpMove(int index) const
{
    return index >= 0 && index < HandleCount ? mHandles[size_t(index)] : nullptr;
}

int MovableShape::handleSize() const
{
    return mHandles[1]->width();
}

QPoint MovableShape::snapped(QPoint local) const
{
    if (mGridAlignSize <= 0)
        return local;
    return QPoint(local.x() / mGridAlignSize * mGridAlignSize,
                  local.y() / mGridAlignSize * mGridAlignSize);
}

void MovableShape::continuePressAsMove(QPoint globalPoint)
{
    QWidget *body = shpMove(BodyHandle);
    if (!body || !isVisible())
        return;
    pressed(BodyHandle, body->mapFromGlobal(globalPoint));
    body->grabMouse();
}

void MovableShape::pressed(int, QPoint local)
{
    mPressPoint = snapped(local);
    mPressTopLeft = pos();
    emit StartMove();
}

// The pointer is read in the coordinates of the handle under it, and the
// handle follows the pointer; so the distance from the press point is the
// distance still to go, and a pointer back at the press point means the frame
// has caught up.
void MovableShape::moved(int handle, QPoint local)
{
    const QPoint point = snapped(local);
    if (point == mPressPoint)
        return;
    mMoving = true;
    const QPoint delta = point - mPressPoint;
    setGeometry(dragged(handle, geometry(), delta.x(), delta.y(), mLockWidthResize,
                        mLockHeightResize, 2 * handleSize()));
}

void MovableShape::released()
{
    int left = x();
    int top = y();
    int width = this->width();
    int height = this->height();
    emit EndResize(left - mPressTopLeft.x(), top - mPressTopLeft.y(), left, top, width, height);
    setGeometry(left, top, width, height);
    mMoving = false;
}

QRect MovableShape::dragged(int handle, const QRect &frame, int dx, int dy, bool lockWidth,
                            bool lockHeight, int minimum)
{
    int left = frame.x();
    int top = frame.y();
    int width = frame.width();
    int height = frame.height();
    if (handle == BodyHandle)
        return QRect(left + dx, top + dy, width, height);

    const bool leftEdge = handle == 0 || handle == 3 || handle == 5;
    const bool rightEdge = handle == 2 || handle == 4 || handle == 7;
    const bool topEdge = handle == 0 || handle == 1 || handle == 2;
    const bool bottomEdge = handle == 5 || handle == 6 || handle == 7;

    if (leftEdge && !(handle == 3 && lockWidth)) {
        const int d = lockWidth ? dx : std::min(dx, width - minimum);
        left += d;
        if (!lockWidth)
            width -= d;
    }
    if (rightEdge && !lockWidth)
        width = std::max(minimum, width + dx);
    if (topEdge && !(handle == 1 && lockHeight)) {
        const int d = lockHeight ? dy : std::min(dy, height - minimum);
        top += d;
        if (!lockHeight)
            height -= d;
    }
    if (bottomEdge && !lockHeight)
        height = std::max(minimum, height + dy);
    return QRect(left, top, width, height);
}

void MovableShape::layoutHandles()
{
    const int s = DefaultHandleSize;
    const int w = width();
    const int h = height();
    const int midX = (w - s) / 2;
    const int midY = (h - s) / 2;
    const QPoint places[8] = { { 0, 0 }, { midX, 0 }, { w - s, 0 }, { 0, midY },
                               { w - s, midY }, { 0, h - s }, { midX, h - s }, { w - s, h - s } };
    for (int i = 0; i < 8; ++i)
        mHandles[size_t(i)]->setGeometry(QRect(places[i], QSize(s, s)));
    mHandles[BodyHandle]->setGeometry(rect());
}

void MovableShape::resizeEvent(QResizeEvent *)
{
    layoutHandles();
}

void MovableShape::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    const int inset = DefaultHandleSize / 2;
    p.setPen(QPen(Qt::black, 1, Qt::DashLine));
    p.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
}
