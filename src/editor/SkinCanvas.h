#pragma once

#include <QImage>
#include <QWidget>

// The canvas on which the selected layer is shown: the picture the renderer
// composed, at one canvas pixel per screen pixel. Children laid over it (the
// moving frame) are placed in canvas pixels.
class SkinCanvas : public QWidget
{
    Q_OBJECT

public:
    explicit SkinCanvas(QWidget *parent = nullptr);

    void setPicture(const QImage &picture);
    // Clears the canvas and its picture.
    void clearPicture();
    const QImage &picture() const { return mPicture; }
    bool hasPicture() const { return !mPicture.isNull(); }

    // A point of the widget in canvas pixels, and back.
    QPoint toCanvas(QPoint widgetPoint) const { return widgetPoint; }
    QRect toWidget(const QRect &canvasRect) const { return canvasRect; }

    QSize sizeHint() const override;

signals:
    // The mouse moved over the canvas, at this canvas point.
    void mouseMovedTo(QPoint canvasPoint);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    QImage mPicture;
};
