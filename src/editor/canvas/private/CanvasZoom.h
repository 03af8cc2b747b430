// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>

// The zoom of the canvas, in percent, from 25 to 800 in fixed steps. The
// picture is shown with every canvas pixel as a square of screen pixels (no
// smoothing); positions are turned between widget and canvas pixels here, so
// that picking, the moving frame, drags and the mouse position stay in canvas
// pixels at every zoom.
class CanvasZoom
{
public:
    static constexpr int Minimum = 25;
    static constexpr int Maximum = 800;
    static constexpr int Normal = 100;

    int percent() const { return mPercent; }
    // The nearest step at or below `percent`, within the range.
    void setPercent(int percent);
    void zoomIn();
    void zoomOut();
    void reset() { mPercent = Normal; }

    // The canvas pixel under a widget point (a screen pixel lies in exactly one
    // canvas pixel).
    QPoint toCanvas(QPoint widgetPoint) const;
    // Where a box of canvas pixels lies on the widget.
    QRect toWidget(const QRect &canvasRect) const;
    int toWidgetLength(int canvasLength) const;
    // A distance the frame was dragged on the widget, as whole canvas pixels.
    int toCanvasDistance(int widgetDistance) const;

private:
    int mPercent = Normal;
};
