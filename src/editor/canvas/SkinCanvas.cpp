// SPDX-License-Identifier: MIT
#include "SkinCanvas.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

SkinCanvas::SkinCanvas(QWidget *parent)
    : QWidget(parent)
{
    setMouseTracking(true);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, QColor(128, 128, 128));
    setPalette(p);
}

void SkinCanvas::setPicture(const QImage &picture)
{
    const bool resized = picture.size() != mPicture.size();
    mPicture = picture;
    if (resized) {
        resize(sizeHint());
        updateGeometry();
    }
    update();
}

void SkinCanvas::clearPicture()
{
    mPicture = QImage();
    update();
}

QSize SkinCanvas::sizeHint() const
{
    if (mPicture.isNull())
        return QSize(1, 1);
    return QSize(std::max(1, mZoom.toWidgetLength(mPicture.width())),
                 std::max(1, mZoom.toWidgetLength(mPicture.height())));
}

void SkinCanvas::setZoomPercent(int percent)
{
    mZoom.setPercent(percent);
    zoomChanged();
}

void SkinCanvas::zoomIn()
{
    mZoom.zoomIn();
    zoomChanged();
}

void SkinCanvas::zoomOut()
{
    mZoom.zoomOut();
    zoomChanged();
}

void SkinCanvas::zoomChanged()
{
    resize(sizeHint());
    updateGeometry();
    update();
}

void SkinCanvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!mPicture.isNull()) {
        if (mZoom.percent() == CanvasZoom::Normal) {
            painter.drawImage(QPoint(0, 0), mPicture);
        } else {
            // Nearest-neighbour scaling: each canvas pixel stays one sharp block.
            painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
            painter.drawImage(QRect(QPoint(0, 0), sizeHint()), mPicture);
        }
    }
    if (hasFocus())
        paintFocusFrame(painter);
}

// Around the part of the canvas that is in view, so that it is seen wherever
// the view is scrolled to.
void SkinCanvas::paintFocusFrame(QPainter &painter) const
{
    const QRect shown = visibleRegion().boundingRect();
    if (shown.isEmpty())
        return;
    QPen pen(palette().color(QPalette::Highlight));
    pen.setWidth(kFocusFrameWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const int inset = kFocusFrameWidth / 2;
    painter.drawRect(shown.adjusted(inset, inset, -inset - 1, -inset - 1));
}

void SkinCanvas::focusInEvent(QFocusEvent *event)
{
    update();
    QWidget::focusInEvent(event);
}

void SkinCanvas::focusOutEvent(QFocusEvent *event)
{
    update();
    QWidget::focusOutEvent(event);
}

void SkinCanvas::mouseMoveEvent(QMouseEvent *event)
{
    emit mouseMovedTo(toCanvas(event->position().toPoint()));
    QWidget::mouseMoveEvent(event);
}
