// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>

class LayerRenderer;
class clsElement;
class clsKorviInterface;

// Which object of the shown layer lies on top at a canvas point. The objects
// are visited from the greatest z down, a later object of the layer before an
// earlier one of the same z; the first whose drawn box (as the renderer
// recorded it on the last drawing) holds the point strictly inside is taken. A
// point on an edge of a box is outside, and an object that drew nothing is
// never hit.
//
// An object without a name is passed over and the walk goes on to the objects
// below it: the name is the text an object must have to be picked.
//
// When no box holds the point, a second walk in the same order takes the first
// named object whose box has no size and whose text was printed over the point:
// a text object without a picture can be picked by its text.
class CanvasHitTest
{
public:
    static clsElement *hit(const clsKorviInterface &document, const clsElement *layer,
                           const LayerRenderer &renderer, QPoint canvasPoint);
};
