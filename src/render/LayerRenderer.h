// SPDX-License-Identifier: MIT
#pragma once

#include "DrawnBox.h"
#include "DrawingContext.h"

#include <QHash>
#include <QImage>
#include <QVector>
#include <memory>

class clsElement;
class ElementPainter;

// Draws the layers of a skin on a canvas (a QImage) the way the navigation
// program shows them: the skin's background, the layers a layer uses as a
// backdrop, then the layer's objects in z order. While drawing it records the
// box each object covered, for picking objects on the canvas.
class LayerRenderer
{
public:
    // Everything given is kept by reference and must outlive the renderer.
    LayerRenderer(const clsKorviInterface &document, const ResourceLookup &lookup,
                  PictureCache &cache, SkinFonts &fonts);
    ~LayerRenderer();
    LayerRenderer(const LayerRenderer &) = delete;
    LayerRenderer &operator=(const LayerRenderer &) = delete;

    // The object drawn as selected (its pictures inverted, its text red); none by
    // default.
    void setHighlighted(const clsElement *element) { mHighlighted = element; }
    const clsElement *highlighted() const { return mHighlighted; }

    // A whole picture of a layer: the canvas is cleared and the drawn boxes
    // forgotten, the background drawn, then the layers this one uses, then the
    // layer itself (when one is given).
    void DrawLayer(const clsElement *layer, QImage &canvas);

    // The objects of one layer at offset (0, 0), in ascending z.
    void DrawSingleLayer(const clsElement *layer, QImage &canvas);

    // The layers named by the USELAYER objects of `layer`, in ascending z of the
    // used layers.
    void DrawUsedLayers(const clsElement *layer, QImage &canvas);

    // One object at an offset; returns and records the box it covered.
    DrawnBox DrawElement(const clsElement *element, QImage &canvas, int offsetX, int offsetY,
                         bool highlighted);

    // One drawing of an object, in drawing order. An object drawn several times
    // (the cells of a list) appears once per drawing.
    struct DrawnObject
    {
        const clsElement *element;
        DrawnBox box;
    };
    const QVector<DrawnObject> &drawnObjects() const { return mDrawn; }
    void forgetDrawnObjects();

    // The box an object covered on its last drawing; the unset box when it was not
    // drawn since the boxes were last forgotten.
    DrawnBox boxOf(const clsElement *element) const;

    // The tree key of a drawn object (see NodeKey::of): "Lui_Main|EtxtTitle",
    // "Lui_Main|Uui_Status" for a used layer, "T" + key for a template.
    QByteArray nodeKeyOf(const clsElement *element) const;

    // The font the canvas was last set to by a text.
    CanvasFont canvasFont() const { return mContext.font; }

    // How many pictures the cache decoded so far (a redraw with nothing changed
    // decodes none).
    int picturesDecoded() const;

private:
    QVector<const clsElement *> objectsInZOrder(const clsElement *layer) const;
    QVector<const clsElement *> usedLayersInZOrder(const clsElement *layer) const;

    DrawingContext mContext;
    std::unique_ptr<ElementPainter> mPainter;
    const clsElement *mHighlighted = nullptr;
    QVector<DrawnObject> mDrawn;
    QHash<const clsElement *, DrawnBox> mLastBoxes;
};
