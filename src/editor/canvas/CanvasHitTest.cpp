// SPDX-License-Identifier: MIT
#include "CanvasHitTest.h"

#include "LayerRenderer.h"
#include "SkinNumber.h"
#include "SkinValues.h"
#include "clsKorviInterface.h"

#include <algorithm>
#include <vector>

clsElement *CanvasHitTest::hit(const clsKorviInterface &document, const clsElement *layer,
                               const LayerRenderer &renderer, QPoint canvasPoint)
{
    if (!layer || layer->subElementCount() == 0)
        return nullptr;
    // A z that is not a number counts as the layer's own z, as in drawing.
    const qint64 layerZ = SkinNumber::leadingInteger(document.GetElementValue("z", layer));
    std::vector<clsElement *> objects;
    std::vector<qint64> z;
    for (clsElement *object : layer->SubElements()) {
        objects.push_back(object);
        z.push_back(SkinValues::ValOrDefault(document.GetElementValue("z", object), layerZ));
    }
    // The order of the repeated selection (greatest z first, comparing with
    // greater-or-equal, so the later of equal z first), found by one sort.
    std::vector<size_t> order(objects.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = order.size() - 1 - i;
    std::stable_sort(order.begin(), order.end(), [&z](size_t a, size_t b) { return z[a] > z[b]; });
    for (size_t index : order) {
        clsElement *object = objects[index];
        if (object->strName().isEmpty())
            continue;
        if (renderer.boxOf(object).contains(canvasPoint.x(), canvasPoint.y()))
            return object;
    }
    // Nothing was hit by its box: the objects whose box has no size (texts
    // without a picture) are tried by where their text was printed, in the
    // same order.
    for (size_t index : order) {
        clsElement *object = objects[index];
        if (object->strName().isEmpty())
            continue;
        const DrawnBox box = renderer.boxOf(object);
        if (!box.hasSize() && box.textArea.contains(canvasPoint))
            return object;
    }
    return nullptr;
}
