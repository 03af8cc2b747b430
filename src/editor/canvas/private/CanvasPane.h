// SPDX-License-Identifier: MIT
#pragma once

class MovableShape;
class QScrollArea;
class QWidget;
class SkinCanvas;

// The canvas "pctTemplate" with its moving frame "mshObject", in the scroll
// area "canvasArea", under a bar that may stand above it (the question about
// files changed on disk), all in one pane "canvasPane".
struct CanvasPane
{
    QWidget *pane = nullptr;
    SkinCanvas *canvas = nullptr;
    MovableShape *frame = nullptr;
    QScrollArea *area = nullptr;

    static CanvasPane create(QWidget *barAbove);
};
