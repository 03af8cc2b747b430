#pragma once

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

    bool operator==(const DrawnBox &o) const
    {
        return left == o.left && top == o.top && width == o.width && height == o.height;
    }
};
