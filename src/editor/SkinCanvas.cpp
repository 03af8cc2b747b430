#include "SkinCanvas.h"

#include <QMouseEvent>
#include <QPainter>

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
    return mPicture.isNull() ? QSize(1, 1) : mPicture.size();
}

void SkinCanvas::paintEvent(QPaintEvent *)
{
    if (mPicture.isNull())
        return;
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), mPicture);
}

void SkinCanvas::mouseMoveEvent(QMouseEvent *event)
{
    emit mouseMovedTo(toCanvas(event->position().toPoint()));
    QWidget::mouseMoveEvent(event);
}
