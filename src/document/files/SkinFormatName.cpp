// SPDX-License-Identifier: MIT
#include "SkinFormatName.h"

#include <QFileInfo>

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// `widthDigits` digits, "_", three digits: the whole text.
bool hasFormatShape(QStringView text, int widthDigits)
{
    if (text.size() != widthDigits + 4)
        return false;
    for (int i = 0; i < text.size(); ++i) {
        const bool ok = i == widthDigits ? text.at(i) == QLatin1Char('_') : isDigit(text.at(i));
        if (!ok)
            return false;
    }
    return true;
}

} // namespace

namespace SkinFormatName {

QString fromName(const QString &stem)
{
    for (const int widthDigits : { 4, 3 }) {
        const int length = widthDigits + 4;
        if (stem.size() >= length && hasFormatShape(QStringView(stem).right(length), widthDigits))
            return stem.right(length);
    }
    return {};
}

QString fromFileName(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return fromName(dot >= 0 ? name.left(dot) : name);
}

bool isFormat(const QString &text)
{
    return hasFormatShape(text, 4) || hasFormatShape(text, 3);
}

QSize sizeOf(const QString &format)
{
    if (!isFormat(format))
        return {};
    const int bar = format.indexOf(QLatin1Char('_'));
    return QSize(format.left(bar).toInt(), format.mid(bar + 1).toInt());
}

QString ofSize(QSize size)
{
    return QStringLiteral("%1_%2").arg(size.width(), 3, 10, QLatin1Char('0')).arg(size.height(), 3, 10, QLatin1Char('0'));
}

} // namespace SkinFormatName
