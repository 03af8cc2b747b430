// SPDX-License-Identifier: MIT
#include "FormatCompare.h"

#include "PortNumbers.h"

#include <QPainter>

namespace FormatCompare {

QString fileInFormat(const QString &path, const QString &from, const QString &to)
{
    int count = 0;
    return QString::fromUtf8(PortNumbers::replaceFormat(path.toUtf8(), from.toUtf8(), to.toUtf8(), count));
}

QImage sideBySide(const QImage &left, const QImage &right)
{
    constexpr int kGap = 16;
    QImage out(left.width() + kGap + right.width(), qMax(left.height(), right.height()), QImage::Format_RGB32);
    out.fill(qRgb(32, 32, 32));
    QPainter painter(&out);
    painter.drawImage(0, 0, left);
    painter.drawImage(left.width() + kGap, 0, right);
    return out;
}

} // namespace FormatCompare
