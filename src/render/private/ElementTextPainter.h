// SPDX-License-Identifier: MIT
#pragma once

#include "DrawnBox.h"
#include "ElementPlacement.h"

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QString>

class clsElement;
class clsKorviInterface;
struct DrawingContext;

// Draws the text of one object: its caption in the skin's font, colour, size,
// alignment and padding, each line shrunk until it fits, the way the navigation
// program lays it out.
class ElementTextPainter
{
public:
    explicit ElementTextPainter(DrawingContext &resources);

    void draw(const clsElement *element, QImage &canvas, const ElementPlacement &at, DrawnBox &box,
              bool highlighted);

    // The caption an object shows: its "text" with "\n" as line breaks; for a
    // slider without text the part of "value" before the first "|"; "XXX" for a
    // text, template or slider object that has none. Empty when the object
    // shows no text at all.
    static QString caption(const clsKorviInterface &document, const clsElement *element);

    // The font size drawn for a "fontsize" value: one less, 8 below 1.
    static int sizeFor(const QByteArray &fontSize);

    // A font named exactly "tahoma" (in this case) is printed one line lower, a
    // correction the navigation program makes for that name only.
    static bool needsCommaCorrection(const QString &family);

    // The font drawn for a family, bold flag and size in points (96 dots per inch).
    static QFont fontFor(const QString &family, bool bold, int pointSize);

private:
    QByteArray value(const char *name, const clsElement *element) const;
    void selectFont(const clsElement *element);

    DrawingContext &mContext;
};
