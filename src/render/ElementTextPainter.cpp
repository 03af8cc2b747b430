// SPDX-License-Identifier: MIT
#include "ElementTextPainter.h"

#include "DrawingContext.h"
#include "SkinFonts.h"
#include "SkinNumber.h"
#include "SkinValues.h"
#include "clsKorviInterface.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>

using namespace SkinValues;

namespace {

int widestLine(FontMeasure &measure, const CanvasFont &font, const QStringList &lines)
{
    int widest = 0;
    for (const QString &line : lines)
        widest = std::max(widest, measure.width(font, line));
    return widest;
}

// Lowers the size one point at a time while the line is wider than the room,
// never below 2.
void shrinkToFit(FontMeasure &measure, CanvasFont &font, const QString &line, int room)
{
    while (font.pointSize >= 3 && measure.width(font, line) > room)
        --font.pointSize;
}

} // namespace

ElementTextPainter::ElementTextPainter(DrawingContext &resources)
    : mContext(resources)
{
}

QByteArray ElementTextPainter::value(const char *name, const clsElement *element) const
{
    return mContext.document.GetElementValue(name, element);
}

QString ElementTextPainter::caption(const clsKorviInterface &document, const clsElement *element)
{
    // Decoded first: in a double-byte code page a backslash or a "|" may be the
    // second byte of a character.
    const SkinCodec &codec = document.codec();
    QString text = codec.toText(document.GetElementValue("text", element));
    text.replace(QLatin1String("\\n"), QLatin1String("\n"));
    if (text.isEmpty() && !element->IsText() && !element->IsTemplate() && !element->IsSlider())
        return {};
    if (text.isEmpty() && element->IsSlider()) {
        const QString sliderValue = codec.toText(document.GetElementValue("value", element));
        const qsizetype bar = sliderValue.indexOf(QLatin1Char('|'));
        text = bar >= 0 ? sliderValue.left(bar) : sliderValue;
    }
    if (text.isEmpty())
        text = QStringLiteral("XXX");
    return text;
}

int ElementTextPainter::sizeFor(const QByteArray &fontSize)
{
    const int size = Number(fontSize) - 1;
    return size < 1 ? 8 : size;
}

bool ElementTextPainter::needsCommaCorrection(const QString &family)
{
    return family == QLatin1String("tahoma");
}

QFont ElementTextPainter::fontFor(const QString &family, bool bold, int pointSize)
{
    return FontMeasure::fontFor(family, bold, pointSize);
}

void ElementTextPainter::selectFont(const clsElement *element)
{
    QByteArray name = value("font", element);
    if (name.isEmpty())
        name = "Verdana";
    // A name ending in "bd" (in this case) asks for the bold face of the rest.
    const bool bold = name.endsWith("bd");
    if (bold)
        name.chop(2);
    // An empty name cannot be set: the canvas keeps the family it had.
    if (!name.trimmed().isEmpty())
        mContext.font.family = mContext.fonts.resolveFamily(mContext.document.codec().toText(name));
    else if (mContext.font.family.isEmpty())
        mContext.font.family = mContext.fonts.resolveFamily(QStringLiteral("Verdana"));
    mContext.font.bold = bold;
}

void ElementTextPainter::draw(const clsElement *element, QImage &canvas, const ElementPlacement &at,
                              DrawnBox &box, bool highlighted)
{
    const QString text = caption(mContext.document, element);
    if (text.isEmpty())
        return;
    selectFont(element);
    const QRgb colour = highlighted ? qRgb(255, 0, 0) : ParseColor(value("color", element));
    const QByteArray fontSize = value("fontsize", element);
    const int S = Number(fontSize) - 1;
    CanvasFont &font = mContext.font;
    FontMeasure &measure = mContext.measure;
    font.pointSize = sizeFor(fontSize);

    const int P = Number(value("padding", element));
    const int PL = Number(value("paddingleft", element));
    const int PR = Number(value("paddingright", element));
    const Alignment horizontal = ParseAlign(value("align", element), AlignLeft);
    const Alignment vertical = ParseAlign(value("valign", element), element->IsText() ? AlignTop : AlignCenter);
    const int DX = horizontal.offset;
    const int DY = vertical.offset;
    const bool slider = element->IsSlider();

    mContext.fonts.reportMissingLetters(measure.font(font), text);
    const QStringList lines = text.split(QLatin1Char('\n'));
    QPainter painter(&canvas);
    painter.setPen(QColor(colour));
    for (int i = 0; i < lines.size(); ++i) {
        const QString &line = lines.at(i);
        // With no size of its own (S below 1) a line keeps the size the line
        // before it was shrunk to.
        if (S > 0)
            font.pointSize = S;
        if (at.W > 0)
            shrinkToFit(measure, font, line, at.W - 2 * P - PL - PR);
        if (at.WW > 0)
            shrinkToFit(measure, font, line, at.WW - 2 * P - PL - PR - DX);

        const QFontMetrics &metrics = measure.metrics(font);
        const int lineWidth = measure.width(font, line);
        const int TW = widestLine(measure, font, lines);
        const int LH = metrics.height();
        const int TH = LH * int(lines.size());

        // "paddingleft" only narrows the room; it does not move a left-aligned
        // line. Meant: skins are laid out against this.
        int x = at.X + DX + P;
        if (horizontal.code == AlignRight)
            x = at.X + DX - P - PR + (slider ? at.WW : at.W) - TW;
        else if (horizontal.code == AlignCenter)
            x = at.X + DX + (at.WW - lineWidth) / 2;

        int y = at.Y + DY + i * LH;
        if (vertical.code == AlignCenter && at.HH >= 1)
            y = at.Y + DY + i * LH + (at.HH - TH) / 2;
        else if (vertical.code == AlignBottom && at.HH > 0)
            y = at.Y + at.HH - TH + DY + i * LH;

        box.lowerCorner(x, y);
        if (needsCommaCorrection(font.family))
            y += metrics.height();
        box.textArea |= QRect(x, y, lineWidth, LH);
        painter.setFont(measure.font(font));
        // Printed with the line's top-left corner at the start point.
        painter.drawText(QPoint(x, y + metrics.ascent()), line);
    }
}
