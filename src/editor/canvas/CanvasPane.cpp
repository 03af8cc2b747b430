// SPDX-License-Identifier: MIT
#include "CanvasPane.h"

#include "MovableShape.h"
#include "SkinCanvas.h"

#include <QScrollArea>
#include <QVBoxLayout>

CanvasPane CanvasPane::create(QWidget *barAbove)
{
    CanvasPane made;
    made.canvas = new SkinCanvas;
    made.canvas->setObjectName(QStringLiteral("pctTemplate"));
    made.frame = new MovableShape(made.canvas);
    made.frame->setObjectName(QStringLiteral("mshObject"));
    made.frame->hide();
    made.area = new QScrollArea;
    made.area->setObjectName(QStringLiteral("canvasArea"));
    made.area->setWidget(made.canvas);
    made.area->setWidgetResizable(false);
    made.area->setBackgroundRole(QPalette::Dark);
    made.pane = new QWidget;
    made.pane->setObjectName(QStringLiteral("canvasPane"));
    auto *layout = new QVBoxLayout(made.pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(barAbove);
    layout->addWidget(made.area, 1);
    return made;
}
