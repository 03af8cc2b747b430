// SPDX-License-Identifier: MIT
#include "FontMeasure.h"

#include "DrawingContext.h"

#include <algorithm>

QFont FontMeasure::fontFor(const QString &family, bool bold, int pointSize)
{
    QFont font(family);
    // Points at 96 dots per inch: 4 pixels for every 3 points.
    font.setPixelSize(std::max(1, qRound(pointSize * 96.0 / 72.0)));
    font.setBold(bold);
    font.setKerning(false);
    return font;
}

FontMeasure::Entry &FontMeasure::entry(const CanvasFont &canvasFont)
{
    if (mLast && canvasFont.pointSize == mLastPointSize && canvasFont.bold == mLastBold
        && canvasFont.family == mLastFamily)
        return *mLast;
    const QString key = canvasFont.family + QLatin1Char(canvasFont.bold ? '\x01' : '\x02')
        + QString::number(canvasFont.pointSize);
    std::shared_ptr<Entry> &slot = mEntries[key];
    if (!slot)
        slot = std::make_shared<Entry>(fontFor(canvasFont.family, canvasFont.bold, canvasFont.pointSize));
    // Entries are held by pointer, so this one stays where it is as others come.
    mLast = slot.get();
    mLastFamily = canvasFont.family;
    mLastBold = canvasFont.bold;
    mLastPointSize = canvasFont.pointSize;
    return *slot;
}

const QFont &FontMeasure::font(const CanvasFont &canvasFont)
{
    return entry(canvasFont).font;
}

const QFontMetrics &FontMeasure::metrics(const CanvasFont &canvasFont)
{
    return entry(canvasFont).metrics;
}

int FontMeasure::width(const CanvasFont &canvasFont, const QString &text)
{
    Entry &e = entry(canvasFont);
    const auto known = e.widths.constFind(text);
    if (known != e.widths.constEnd())
        return *known;
    if (e.widths.size() >= kMaxWidths)
        e.widths.clear();
    const int w = e.metrics.horizontalAdvance(text);
    e.widths.insert(text, w);
    return w;
}
