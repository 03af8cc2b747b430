// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

// The box an object covered on the last drawing, used to pick objects on the
// canvas. It is not the union of what was drawn: left and top only ever go down
// to the smallest left and top met, width and height only ever up to the largest
// width and height met (sizes are compared, not right and bottom edges), which is
// how the navigation program's editor has always measured objects.
struct DrawnBox
{
    // An object that drew nothing keeps these values and is never hit.
    static constexpr int kUnsetPosition = 10000;

    int left = kUnsetPosition;
    int top = kUnsetPosition;
    int width = 0;
    int height = 0;
    // Where the object's text lines were printed, all of them together; kept
    // beside the box, which it leaves as it is. A text object that draws no
    // picture has a box without size, so this is what it is picked by and
    // what the moving frame surrounds (see hasSize).
    QRect textArea;

    void extend(int x, int y, int w, int h)
    {
        lowerCorner(x, y);
        if (w > width)
            width = w;
        if (h > height)
            height = h;
    }

    void lowerCorner(int x, int y)
    {
        if (x < left)
            left = x;
        if (y < top)
            top = y;
    }

    // Strictly inside: a point on an edge is outside.
    bool contains(int x, int y) const
    {
        return left < x && x < left + width && top < y && y < top + height;
    }

    bool hasSize() const { return width > 0 && height > 0; }

    // The box itself when it has a size, else the text's area.
    QRect shownRect() const
    {
        return hasSize() || textArea.isEmpty() ? QRect(left, top, width, height) : textArea;
    }

    // The box alone is compared: the text's area goes with it.
    bool operator==(const DrawnBox &o) const
    {
        return left == o.left && top == o.top && width == o.width && height == o.height;
    }
};
