// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class clsElement;

// What the main window shows of the current node, as the controllers of the
// canvas and of the property grid see it: the block drawn on the canvas, the
// object that is current (with the moving frame on it, or not), and the way to
// show another node.
class ShownSelection
{
public:
    virtual ~ShownSelection() = default;

    // The layer, state or template drawn on the canvas; none when nothing is.
    virtual const clsElement *shownLayer() const = 0;
    // The element or template the last selection made current, and its node key.
    virtual clsElement *currentObject() const = 0;
    virtual QByteArray currentNodeKey() const = 0;
    // The current object is an object of the shown layer with the frame on it.
    virtual bool frameOnObject() const = 0;

    // Selects the node with this key in the tree (unfolding the way to it) and
    // shows it.
    virtual void selectNodeKey(const QByteArray &nodeKey) = 0;
    // Draws the canvas again and places the frame again.
    virtual void RefreshCanvas() = 0;

protected:
    ShownSelection() = default;
    ShownSelection(const ShownSelection &) = default;
    ShownSelection &operator=(const ShownSelection &) = default;
};
