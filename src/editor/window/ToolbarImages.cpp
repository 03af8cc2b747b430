// SPDX-License-Identifier: MIT
#include "ToolbarImages.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace {

// A padlock, open or shut: the two states of the Lock button.
QIcon padlock(bool shut)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(60, 60, 60), 3));
    p.setBrush(Qt::NoBrush);
    const QRectF shackle = shut ? QRectF(9, 3, 14, 16) : QRectF(15, 1, 14, 16);
    p.drawArc(shackle, 0, 180 * 16);
    p.drawLine(QPointF(shackle.left(), shackle.center().y()), QPointF(shackle.left(), 15));
    if (shut)
        p.drawLine(QPointF(shackle.right(), shackle.center().y()), QPointF(shackle.right(), 15));
    p.setPen(QPen(QColor(60, 60, 60), 1));
    p.setBrush(shut ? QColor(200, 150, 30) : QColor(120, 180, 90));
    p.drawRoundedRect(QRectF(5, 14, 22, 16), 3, 3);
    return QIcon(pixmap);
}

} // namespace

ToolbarImages::ToolbarImages()
{
    QStyle *style = QApplication::style();
    mImages.insert(QStringLiteral("Open"), style->standardIcon(QStyle::SP_DialogOpenButton));
    mImages.insert(QStringLiteral("Dir"), style->standardIcon(QStyle::SP_DirOpenIcon));
    mImages.insert(QStringLiteral("Save"), style->standardIcon(QStyle::SP_DialogSaveButton));
    mImages.insert(QStringLiteral("LockOff"), padlock(false));
    mImages.insert(QStringLiteral("LockOn"), padlock(true));
    mImages.insert(QStringLiteral("Settings"), style->standardIcon(QStyle::SP_FileDialogDetailedView));
    mImages.insert(QStringLiteral("Prev"), style->standardIcon(QStyle::SP_ArrowBack));
    mImages.insert(QStringLiteral("Next"), style->standardIcon(QStyle::SP_ArrowForward));
    mImages.insert(QStringLiteral("About"), style->standardIcon(QStyle::SP_MessageBoxInformation));
}
