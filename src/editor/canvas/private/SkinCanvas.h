// SPDX-License-Identifier: MIT
#pragma once

#include "CanvasZoom.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

// The canvas on which the selected layer is shown: the picture the renderer
// composed, zoomed from 25 % to 800 % with every canvas pixel drawn as a block
// of screen pixels, never smoothed. Children laid over it (the moving frame)
// are placed in widget pixels, turned from canvas pixels by toWidget. While
// it has the keyboard focus, a frame in the highlight colour runs round the
// part in view.
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
    QPoint toCanvas(QPoint widgetPoint) const { return mZoom.toCanvas(widgetPoint); }
    QRect toWidget(const QRect &canvasRect) const { return mZoom.toWidget(canvasRect); }
    // A distance on the widget (a drag) in whole canvas pixels.
    QPoint toCanvasDistance(QPoint widgetDistance) const
    {
        return QPoint(mZoom.toCanvasDistance(widgetDistance.x()), mZoom.toCanvasDistance(widgetDistance.y()));
    }

    int zoomPercent() const { return mZoom.percent(); }
    // One of the zoom steps (the nearest one at or below the percentage).
    void setZoomPercent(int percent);
    void zoomIn();
    void zoomOut();

    QSize sizeHint() const override;

    static constexpr int kFocusFrameWidth = 2;

signals:
    // The mouse moved over the canvas, at this canvas point.
    void mouseMovedTo(QPoint canvasPoint);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void zoomChanged();
    void paintFocusFrame(QPainter &painter) const;

    QImage mPicture;
    CanvasZoom mZoom;
};
