// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class MovableShape;

// One grab handle of a MovableShape; passes the left button's press, moves and
// release to the frame with the pointer in its own coordinates.
class MoveHandle : public QWidget
{
    Q_OBJECT

public:
    MoveHandle(int index, MovableShape *shape);
    int index() const { return mIndex; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int mIndex;
    MovableShape *mShape;
};
