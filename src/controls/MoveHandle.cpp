// SPDX-License-Identifier: MIT
#include "MoveHandle.h"

#include "MovableShape.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

Qt::CursorShape cursorOf(int index)
{
    switch (index) {
    case 0: case 7: return Qt::SizeFDiagCursor;
    case 2: case 5: return Qt::SizeBDiagCursor;
    case 1: case 6: return Qt::SizeVerCursor;
    case 3: case 4: return Qt::SizeHorCursor;
    default: return Qt::SizeAllCursor;
    }
}

} // namespace

MoveHandle::MoveHandle(int index, MovableShape *shape)
    : QWidget(shape)
    , mIndex(index)
    , mShape(shape)
{
    setCursor(cursorOf(index));
    setObjectName(QStringLiteral("shpMove_%1").arg(index));
}

void MoveHandle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mShape->pressed(mIndex, event->position().toPoint());
}

void MoveHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        mShape->moved(mIndex, event->position().toPoint());
}

void MoveHandle::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    // A move taken over from a press elsewhere holds the mouse until now.
    if (QWidget::mouseGrabber() == this)
        releaseMouse();
    mShape->released();
}

void MoveHandle::paintEvent(QPaintEvent *)
{
    if (mIndex == MovableShape::BodyHandle)
        return; // the body is see-through: the object shows under it
    QPainter p(this);
    p.fillRect(rect(), Qt::black);
    p.setPen(Qt::white);
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}
