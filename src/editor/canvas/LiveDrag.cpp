// SPDX-License-Identifier: MIT
#include "LiveDrag.h"

#include "LayerRenderer.h"
#include "clsElement.h"
#include "clsElements.h"

#include <memory>

namespace {

// Takes the object out of its collection for the time of one drawing and puts
// it back at its place under its own key, so the drawing leaves it out.
class ObjectSetAside
{
public:
    explicit ObjectSetAside(const clsElement *object)
        : mOwner(object ? object->owner() : nullptr)
        , mPosition(mOwner ? mOwner->positionOf(object) : -1)
    {
        if (mPosition >= 0)
            mTaken = mOwner->Take(mPosition);
    }
    ~ObjectSetAside()
    {
        if (mTaken)
            mOwner->Insert(mPosition, std::move(mTaken));
    }
    ObjectSetAside(const ObjectSetAside &) = delete;
    ObjectSetAside &operator=(const ObjectSetAside &) = delete;

private:
    clsElements *mOwner;
    int mPosition;
    std::unique_ptr<clsElement> mTaken;
};

} // namespace

QImage LiveDrag::pictureWithout(LayerRenderer &renderer, const clsElement *layer,
                                const clsElement *object, QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::black);
    const clsElement *highlighted = renderer.highlighted();
    {
        ObjectSetAside aside(object == layer ? nullptr : object);
        if (layer && layer->IsTemplate()) {
            renderer.DrawLayer(nullptr, picture);
            renderer.DrawElement(layer, picture, 0, 0, false);
        } else {
            renderer.DrawLayer(layer, picture);
        }
    }
    renderer.setHighlighted(highlighted);
    return picture;
}

QImage LiveDrag::pictureWith(LayerRenderer &renderer, const QImage &background,
                             const clsElement *object, QPoint distance)
{
    QImage picture = background.copy();
    if (object)
        renderer.DrawElement(object, picture, distance.x(), distance.y(), true);
    return picture;
}
