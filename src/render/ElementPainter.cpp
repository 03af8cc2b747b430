// SPDX-License-Identifier: MIT
#include "ElementPainter.h"

#include "ElementTextPainter.h"
#include "LayerRenderer.h"
#include "PictureCache.h"
#include "PictureDrawing.h"
#include "DrawingContext.h"
#include "ResourceLookup.h"
#include "SkinNumber.h"
#include "SkinValues.h"
#include "clsKorviInterface.h"

#include <algorithm>

using namespace SkinValues;

namespace {

// Positions are whole pixels: a half rounds to the even neighbour, as the
// navigation program's arithmetic does when it stores a position.
int roundedHalf(double value)
{
    return clampCoordinate(SkinNumber::roundHalfEven(value));
}

QList<QByteArray> templateNames(QByteArray list)
{
    list.replace('"', QByteArray());
    if (list.isEmpty())
        return {};
    return list.split('+');
}

} // namespace

ElementPainter::ElementPainter(LayerRenderer &renderer, DrawingContext &resources)
    : mRenderer(renderer)
    , mContext(resources)
{
}

QByteArray ElementPainter::value(const char *name, const clsElement *element) const
{
    return mContext.document.GetElementValue(name, element);
}

DrawnBox ElementPainter::draw(const clsElement *element, QImage &canvas, int offsetX, int offsetY,
                              bool highlighted)
{
    DrawnBox box;
    ElementPlacement at;
    at.X = clampCoordinate(qint64(Number(value("x", element))) + offsetX);
    at.Y = clampCoordinate(qint64(Number(value("y", element))) + offsetY);
    at.W = Number(value("w", element));
    at.H = Number(value("h", element));
    at.WW = at.W;
    at.HH = at.H;

    if (element->IsList())
        drawGrid(element, canvas, at, box);

    const QByteArray picture = value("bmp", element);
    if (!picture.isEmpty()) {
        const int pictureWidth = drawMainPicture(element, picture, canvas, at, box, highlighted);
        drawIndicator(element, canvas, at, pictureWidth, box, highlighted);
    }

    ElementTextPainter(mContext).draw(element, canvas, at, box, highlighted);
    drawIcon(element, canvas, at, box, highlighted);
    return box;
}

void ElementPainter::drawGrid(const clsElement *list, QImage &canvas, const ElementPlacement &at,
                              DrawnBox &box)
{
    const int cellHeight = Number(value("cellh", list));
    const int cellWidth = Number(value("cellw", list));
    const int columns = Number(value("col", list));
    const int rows = Number(value("row", list));
    const QList<QByteArray> names = templateNames(value("element_template", list));

    qint64 cells = 0;
    int index = 0;
    for (int r = 1; r <= rows && cells < kMaxCells; ++r) {
        for (int c = 1; c <= columns && cells < kMaxCells; ++c, ++cells) {
            const int x = clampCoordinate(at.X + qint64(c - 1) * cellWidth);
            const int y = clampCoordinate(at.Y + qint64(r - 1) * cellHeight);
            if (!names.isEmpty())
                drawCell(mContext.document.Layers().Find(names.at(index)), canvas, x, y);
            // Each name serves one cell; the last one serves all the cells left.
            if (index < names.size() - 1)
                ++index;
        }
    }
    box.extend(at.X, at.Y, clampCoordinate(qint64(cellWidth) * columns),
               clampCoordinate(qint64(cellHeight) * rows));
}

void ElementPainter::drawCell(const clsElement *cellTemplate, QImage &canvas, int x, int y)
{
    // A name that is not a block draws nothing; nor does a template inside itself.
    if (!cellTemplate || mTemplateChain.contains(cellTemplate))
        return;
    mTemplateChain.append(cellTemplate);
    for (const clsElement *object : cellTemplate->SubElements())
        mRenderer.DrawElement(object, canvas, x, y, object == mRenderer.highlighted());
    mTemplateChain.removeLast();
}

ElementPainter::Frame ElementPainter::loadFrame(const QByteArray &reference, bool highlighted)
{
    Frame frame;
    frame.file = mContext.lookup.GetImageFile(reference, mContext.document.codec());
    // A sprite count of 0 ("#0") has no frame height: the picture is skipped.
    if (frame.file.spriteCount == 0)
        return frame;
    PictureProblem problem;
    QSize size = mContext.cache.LoadImageFile(frame.file.path, frame.file.stamp, mContext.buffer, &problem);
    // A picture that was found but cannot be decoded is reported by name and
    // shown as the placeholder, as a missing one is.
    if (problem.isProblem())
        mContext.lookup.info().append(problem.reportLine(frame.file.path));
    if (problem.unreadable)
        size = mContext.cache.LoadImageFile(QString(), mContext.buffer);
    frame.width = size.width();
    frame.height = frame.file.stripes >= 1 ? frame.file.stripes
                                           : size.height() / frame.file.spriteCount;
    // The selected object's pictures are shown inverted: the whole buffer is XORed
    // with white before the copy. Magenta becomes green and no longer counts as
    // transparent, so the picture shows as an opaque inverted rectangle. Meant.
    if (highlighted && !mContext.buffer.isNull())
        mContext.buffer.invertPixels(QImage::InvertRgb);
    frame.drawable = true;
    return frame;
}

void ElementPainter::copyFrame(QImage &canvas, int x, int y, int width, int height, int sourceY)
{
    if (width <= 0 || height <= 0 || mContext.buffer.isNull())
        return;
    PictureDrawing::DrawTransparent(canvas, x, y, width, height, mContext.buffer, 0, sourceY);
}

int ElementPainter::drawMainPicture(const clsElement *element, const QByteArray &reference,
                                    QImage &canvas, ElementPlacement &at, DrawnBox &box,
                                    bool highlighted)
{
    const Frame frame = loadFrame(reference, highlighted);
    if (!frame.drawable)
        return 0;
    const int PW = frame.width;
    const int PH = frame.height;
    // The offsets that "bmpalign" and "bmpvalign" may carry are read but not
    // applied to the main picture: the navigation program ignores them too.
    int horizontal = ParseAlign(value("bmpalign", element), AlignLeft).code;
    int vertical = ParseAlign(value("bmpvalign", element), AlignTop).code;
    if (frame.file.grabCenter) {
        horizontal = AlignCenter;
        vertical = AlignCenter;
    }
    if (horizontal == AlignRight)
        at.X -= PW;
    else if (horizontal == AlignCenter)
        at.X -= PW / 2;
    // A sprite is centred again within its own width by "align", on top of the
    // picture alignment above.
    if (element->IsSprite() && ParseAlign(value("align", element), AlignLeft).code == AlignCenter
        && at.W != 0)
        at.X += (at.W - PW) / 2;
    if (vertical == AlignBottom)
        at.Y -= PH;
    else if (vertical == AlignCenter)
        at.Y -= PH / 2;

    box.extend(at.X, at.Y, PW, PH);
    copyFrame(canvas, at.X, at.Y, PW, PH, 0);
    at.WW = PW;
    at.HH = PH;
    return PW;
}

void ElementPainter::drawIndicator(const clsElement *element, QImage &canvas, ElementPlacement &at,
                                   int pictureWidth, DrawnBox &box, bool highlighted)
{
    const QByteArray reference = value("sprind", element);
    if (reference.isEmpty())
        return;
    // The indicator's horizontal centre goes on the main picture's centre.
    int IX = roundedHalf(at.X + pictureWidth / 2.0);
    const Frame frame = loadFrame(reference, highlighted);
    if (!frame.drawable)
        return;
    IX -= frame.width / 2;
    box.extend(IX, at.Y, frame.width, frame.height);
    copyFrame(canvas, IX, at.Y, frame.width, frame.height, 0);
    at.WW = frame.width;
    at.HH = frame.height;
}

void ElementPainter::drawIcon(const clsElement *element, QImage &canvas, ElementPlacement &at,
                              DrawnBox &box, bool highlighted)
{
    const QByteArray reference = value("iconspr", element);
    if (reference.isEmpty())
        return;
    const Frame frame = loadFrame(reference, highlighted);
    if (!frame.drawable)
        return;
    const int IW = frame.width;
    const int IH = frame.height;
    const Alignment horizontal = ParseAlign(value("iconalign", element), AlignLeft);
    const Alignment vertical = ParseAlign(value("iconvalign", element), AlignTop);
    // Only centring acts on icons; "right" and "bottom" are left alone, as the
    // navigation program does.
    if (horizontal.code == AlignCenter)
        at.X = roundedHalf(at.X + (at.WW - IW) / 2.0);
    if (vertical.code == AlignCenter)
        at.Y = roundedHalf(at.Y + (at.HH - IH) / 2.0);
    at.X += horizontal.offset;
    at.Y += vertical.offset;
    box.extend(at.X, at.Y, IW, IH);
    const qint64 phase = Number(value("iconphase", element));
    copyFrame(canvas, at.X, at.Y, IW, IH, clampCoordinate(phase * IH));
}
