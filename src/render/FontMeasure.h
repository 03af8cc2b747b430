// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QString>
#include <memory>

struct CanvasFont;

// Fonts and text widths as the canvas measures them, kept between redraws: a
// layer redrawn with nothing changed measures no text again.
class FontMeasure
{
public:
    const QFont &font(const CanvasFont &canvasFont);
    const QFontMetrics &metrics(const CanvasFont &canvasFont);
    int width(const CanvasFont &canvasFont, const QString &text);

    // The font drawn for a family, bold flag and size in points. The canvas
    // measures 96 dots per inch, as the device screens do.
    static QFont fontFor(const QString &family, bool bold, int pointSize);

private:
    struct Entry
    {
        explicit Entry(const QFont &f) : font(f), metrics(f) { }
        QFont font;
        QFontMetrics metrics;
        QHash<QString, int> widths;
    };

    Entry &entry(const CanvasFont &canvasFont);

    // Beyond this many remembered widths of one font, the oldest are let go
    // all at once; a skin shows far fewer texts.
    static constexpr int kMaxWidths = 20000;

    QHash<QString, std::shared_ptr<Entry>> mEntries;
    // The font asked for last, found again without building its key: a text
    // asks for the same font many times in a row.
    Entry *mLast = nullptr;
    QString mLastFamily;
    bool mLastBold = false;
    int mLastPointSize = 0;
};
