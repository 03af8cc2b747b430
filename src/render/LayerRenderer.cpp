// SPDX-License-Identifier: MIT
#include "LayerRenderer.h"

#include "ElementPainter.h"
#include "NodeKey.h"
#include "PictureCache.h"
#include "PictureDrawing.h"
#include "SkinNumber.h"
#include "SkinValues.h"
#include "clsKorviInterface.h"

#include <algorithm>

namespace {

// What the canvas shows where the background picture does not reach.
constexpr QRgb kClearedCanvas = 0xFF000000u;

// Ascending z, and among equal z the earlier one first. This is the order that
// repeated selection of the smallest z gives (a later candidate only replaces
// the current choice when its z is strictly smaller), found with a stable sort.
QVector<const clsElement *> sortedByZ(const QVector<const clsElement *> &elements,
                                      const QVector<qint64> &z)
{
    QVector<int> order(elements.size());
    for (int i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&z](int a, int b) { return z[a] < z[b]; });
    QVector<const clsElement *> sorted;
    sorted.reserve(order.size());
    for (int i : order)
        sorted << elements[i];
    return sorted;
}

} // namespace

LayerRenderer::LayerRenderer(const clsKorviInterface &document, const ResourceLookup &lookup,
                             PictureCache &cache, SkinFonts &fonts)
    : mContext{ document, lookup, cache, fonts, QImage(), CanvasFont(), FontMeasure() }
    , mPainter(std::make_unique<ElementPainter>(*this, mContext))
{
}

LayerRenderer::~LayerRenderer() = default;

void LayerRenderer::DrawLayer(const clsElement *layer, QImage &canvas)
{
    forgetDrawnObjects();
    canvas.fill(kClearedCanvas);
    PictureDrawing::DrawBackground(mContext.lookup, mContext.cache, mContext.buffer, canvas);
    if (!layer)
        return;
    // The layers a layer uses are its backdrop: they go under its own objects.
    DrawUsedLayers(layer, canvas);
    DrawSingleLayer(layer, canvas);
}

QVector<const clsElement *> LayerRenderer::objectsInZOrder(const clsElement *layer) const
{
    const clsKorviInterface &doc = mContext.document;
    // An object without a numeric z takes the layer's own z, 0 when it has none.
    const qint64 layerZ = SkinNumber::leadingInteger(doc.GetElementValue("z", layer));
    QVector<const clsElement *> objects;
    QVector<qint64> z;
    for (const clsElement *object : layer->SubElements()) {
        objects << object;
        z << SkinValues::ValOrDefault(doc.GetElementValue("z", object), layerZ);
    }
    return sortedByZ(objects, z);
}

void LayerRenderer::DrawSingleLayer(const clsElement *layer, QImage &canvas)
{
    if (!layer)
        return;
    for (const clsElement *object : objectsInZOrder(layer))
        DrawElement(object, canvas, 0, 0, object == mHighlighted);
}

QVector<const clsElement *> LayerRenderer::usedLayersInZOrder(const clsElement *layer) const
{
    const clsKorviInterface &doc = mContext.document;
    QVector<const clsElement *> used;
    QVector<qint64> z;
    for (const clsElement *object : layer->SubElements()) {
        if (!object->IsUseLayer())
            continue;
        const clsElement *target = doc.Layers().Find(object->strName());
        // A layer used twice is drawn once; a layer never uses itself as backdrop.
        if (!target || target == layer || used.contains(target))
            continue;
        used << target;
        // A used layer without a z counts as 0.
        z << SkinNumber::leadingInteger(doc.GetElementValue("z", target));
    }
    return sortedByZ(used, z);
}

void LayerRenderer::DrawUsedLayers(const clsElement *layer, QImage &canvas)
{
    if (!layer)
        return;
    for (const clsElement *used : usedLayersInZOrder(layer))
        DrawSingleLayer(used, canvas);
}

DrawnBox LayerRenderer::DrawElement(const clsElement *element, QImage &canvas, int offsetX,
                                    int offsetY, bool highlighted)
{
    // Recorded before drawing, so that a list comes before the cells it draws.
    const int slot = mDrawn.size();
    mDrawn.append({ element, DrawnBox() });
    const DrawnBox box = mPainter->draw(element, canvas, offsetX, offsetY, highlighted);
    mDrawn[slot].box = box;
    mLastBoxes.insert(element, box);
    return box;
}

void LayerRenderer::forgetDrawnObjects()
{
    mDrawn.clear();
    mLastBoxes.clear();
}

DrawnBox LayerRenderer::boxOf(const clsElement *element) const
{
    return mLastBoxes.value(element, DrawnBox());
}

QByteArray LayerRenderer::nodeKeyOf(const clsElement *element) const
{
    return NodeKey::of(mContext.document, element);
}

int LayerRenderer::picturesDecoded() const
{
    return mContext.cache.decodeCount();
}
