// SPDX-License-Identifier: MIT
#include "SplitterButton.h"

#include "Splitter.h"

#include <QMouseEvent>
#include <QPainter>

SplitterButton::SplitterButton(Splitter *splitter)
    : QWidget(splitter)
    , mSplitter(splitter)
{
    setObjectName(QStringLiteral("pctButton"));
    setCursor(Qt::PointingHandCursor);
}

void SplitterButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mSplitter->buttonReleased(event->position().toPoint());
}

void SplitterButton::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().dark());
    p.setPen(palette().buttonText().color());
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}
