// SPDX-License-Identifier: MIT
#pragma once

#include "DrawnBox.h"
#include "ElementPlacement.h"
#include "ImageFile.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QVector>

class clsElement;
class LayerRenderer;
struct DrawingContext;

// Draws one object: the grid of a list, the main picture, the indicator picture,
// the text and the icon, in that order, and measures the box they covered.
class ElementPainter
{
public:
    ElementPainter(LayerRenderer &renderer, DrawingContext &resources);

    DrawnBox draw(const clsElement *element, QImage &canvas, int offsetX, int offsetY,
                  bool highlighted);

    // The most cells one list draws: no screen shows more, and a mistyped
    // "row" or "col" must not stall the drawing.
    static constexpr qint64 kMaxCells = 10000;

private:
    // A picture loaded into the off-screen buffer, with its frame size.
    struct Frame
    {
        bool drawable = false;
        int width = 0;
        int height = 0;
        ImageFile file;
    };

    QByteArray value(const char *name, const clsElement *element) const;
    void drawGrid(const clsElement *list, QImage &canvas, const ElementPlacement &at, DrawnBox &box);
    void drawCell(const clsElement *cellTemplate, QImage &canvas, int x, int y);
    int drawMainPicture(const clsElement *element, const QByteArray &reference, QImage &canvas,
                        ElementPlacement &at, DrawnBox &box, bool highlighted);
    void drawIndicator(const clsElement *element, QImage &canvas, ElementPlacement &at, int pictureWidth,
                       DrawnBox &box, bool highlighted);
    void drawIcon(const clsElement *element, QImage &canvas, ElementPlacement &at, DrawnBox &box,
                  bool highlighted);
    Frame loadFrame(const QByteArray &reference, bool highlighted);
    void copyFrame(QImage &canvas, int x, int y, int width, int height, int sourceY);

    LayerRenderer &mRenderer;
    DrawingContext &mContext;
    // Element templates being drawn as cells right now, outermost first: a
    // template met again inside itself draws nothing.
    QVector<const clsElement *> mTemplateChain;
};
