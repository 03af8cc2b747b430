// SPDX-License-Identifier: MIT
#include "SplitterBar.h"

#include "Splitter.h"

#include <QMouseEvent>
#include <QPainter>

SplitterBar::SplitterBar(Splitter *splitter)
    : QWidget(splitter)
    , mSplitter(splitter)
{
    setObjectName(QStringLiteral("lblPointer"));
}

void SplitterBar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mSplitter->barPressed(event->position().toPoint());
}

void SplitterBar::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        mSplitter->barMoved(event->position().toPoint());
}

void SplitterBar::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mSplitter->barReleased();
}

void SplitterBar::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().button());
}
