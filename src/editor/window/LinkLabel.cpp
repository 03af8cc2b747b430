// SPDX-License-Identifier: MIT
#include "LinkLabel.h"

#include <QMouseEvent>

LinkLabel::LinkLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
    setCursor(Qt::PointingHandCursor);
    QFont f = font();
    f.setUnderline(true);
    setFont(f);
    QPalette p = palette();
    p.setColor(QPalette::WindowText, QColor(0, 0, 255));
    setPalette(p);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
    QLabel::mouseReleaseEvent(event);
}
