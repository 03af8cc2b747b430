// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

class LayerRenderer;
class clsElement;

// The pictures of a drag in progress: the shown layer drawn once without the
// dragged object, and for every position of the frame that picture with the
// object drawn over it at its moving place. The document is left as it is.
class LiveDrag
{
public:
    // The layer (or a template shown alone over the background) drawn without
    // `object`.
    static QImage pictureWithout(LayerRenderer &renderer, const clsElement *layer,
                                 const clsElement *object, QSize size);
    // `background` with `object` drawn over it, moved by `distance` canvas pixels.
    static QImage pictureWith(LayerRenderer &renderer, const QImage &background,
                              const clsElement *object, QPoint distance);
};
