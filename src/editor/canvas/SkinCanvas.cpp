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
    if (mPicture.isNull())
        return;
    QPainter painter(this);
    if (mZoom.percent() == CanvasZoom::Normal) {
        painter.drawImage(QPoint(0, 0), mPicture);
        return;
    }
    // Nearest-neighbour scaling: each canvas pixel stays one sharp block.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(QRect(QPoint(0, 0), sizeHint()), mPicture);
}

void SkinCanvas::mouseMoveEvent(QMouseEvent *event)
{
    emit mouseMovedTo(toCanvas(event->position().toPoint()));
    QWidget::mouseMoveEvent(event);
}
