// SPDX-License-Identifier: MIT
#include "CanvasZoom.h"

#include <cmath>

namespace {

const int kSteps[] = { 25, 50, 75, 100, 150, 200, 300, 400, 600, 800 };

// floor(a / b) for a positive b.
int floorDiv(qint64 a, qint64 b)
{
    return int(a >= 0 ? a / b : -((-a + b - 1) / b));
}

} // namespace

void CanvasZoom::setPercent(int percent)
{
    int chosen = kSteps[0];
    for (int step : kSteps) {
        if (step <= percent)
            chosen = step;
    }
    mPercent = chosen;
}

void CanvasZoom::zoomIn()
{
    for (int step : kSteps) {
        if (step > mPercent) {
            mPercent = step;
            return;
        }
    }
}

void CanvasZoom::zoomOut()
{
    int previous = mPercent;
    for (int step : kSteps) {
        if (step >= mPercent)
            break;
        previous = step;
    }
    mPercent = previous;
}

QPoint CanvasZoom::toCanvas(QPoint widgetPoint) const
{
    return QPoint(floorDiv(qint64(widgetPoint.x()) * 100, mPercent),
                  floorDiv(qint64(widgetPoint.y()) * 100, mPercent));
}

int CanvasZoom::toWidgetLength(int canvasLength) const
{
    return floorDiv(qint64(canvasLength) * mPercent, 100);
}

QRect CanvasZoom::toWidget(const QRect &canvasRect) const
{
    const int left = toWidgetLength(canvasRect.left());
    const int top = toWidgetLength(canvasRect.top());
    const int right = toWidgetLength(canvasRect.left() + canvasRect.width());
    const int bottom = toWidgetLength(canvasRect.top() + canvasRect.height());
    return QRect(left, top, right - left, bottom - top);
}

int CanvasZoom::toCanvasDistance(int widgetDistance) const
{
    return int(std::lround(double(widgetDistance) * 100.0 / mPercent));
}
