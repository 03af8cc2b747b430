// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QRect>
#include <QSettings>
#include <QVariantMap>
#include <QWidget>

#include <array>

class MoveHandle;

// A frame with nine grab handles laid over another widget of the same container
// (its RefObject). The user drags the body to move the frame, or an edge or a
// corner to resize it; on release the host is told where the frame went and may
// correct the result. Sizes can be locked per axis and the pointer snapped to a
// grid. Positions are in the container's pixels.
//
// Handles (shpMove 0 to 8): 0 top-left, 1 top, 2 top-right, 3 left, 4 right,
// 5 bottom-left, 6 bottom, 7 bottom-right, 8 the body.
class MovableShape : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QWidget *RefObject READ RefObject WRITE setRefObject)
    Q_PROPERTY(bool LockWidthResize READ LockWidthResize WRITE setLockWidthResize)
    Q_PROPERTY(bool LockHeightResize READ LockHeightResize WRITE setLockHeightResize)
    Q_PROPERTY(int GridAlignSize READ GridAlignSize WRITE setGridAlignSize)

public:
    static constexpr int HandleCount = 9;
    static constexpr int BodyHandle = 8;
    static constexpr int DefaultHandleSize = 7;

    explicit MovableShape(QWidget *parent = nullptr);

    QWidget *RefObject() const { return mRefObject; }
    // Brings the frame to the front and puts it around the widget: one handle
    // size outside it on every side.
    void setRefObject(QWidget *New_RefObject);
    bool LockWidthResize() const { return mLockWidthResize; }
    void setLockWidthResize(bool New_LockWidthResize) { mLockWidthResize = New_LockWidthResize; }
    bool LockHeightResize() const { return mLockHeightResize; }
    void setLockHeightResize(bool New_LockHeightResize) { mLockHeightResize = New_LockHeightResize; }
    // Grid step in the container's pixels; 0 or less: no snapping.
    int GridAlignSize() const { return mGridAlignSize; }
    void setGridAlignSize(int New_GridAlignSize) { mGridAlignSize = New_GridAlignSize; }

    // A new frame: unlocked, no grid, no referenced widget.
    void InitProperties();
    void ReadProperties(const QVariantMap &bag);
    void WriteProperties(QVariantMap &bag) const;
    void ReadProperties(QSettings &settings);
    void WriteProperties(QSettings &settings) const;

    QWidget *shpMove(int index) const;
    // The width of handle 1, the distance between the frame and its object.
    int handleSize() const;
    bool isMoving() const { return mMoving; }
    // A press that began outside the frame (on the object it was then put
    // over) goes on as a move of the body: the body takes the mouse until the
    // button is released, so one press and drag both picks and moves.
    void continuePressAsMove(QPoint globalPoint);

    // The frame after a drag of `handle` by (dx, dy) from `frame`. A locked axis
    // keeps its size; the left or top edge follows the pointer and the size
    // changes by the opposite amount, so the other edge stays put. A locked
    // axis holds the top and left edge handles (1 and 3) still altogether,
    // as it holds the bottom and right ones: there is nothing else they could
    // do on that axis. The frame never gets smaller than `minimum`.
    static QRect dragged(int handle, const QRect &frame, int dx, int dy, bool lockWidth,
                         bool lockHeight, int minimum);

signals:
    // The left button went down on a handle.
    void StartMove();
    // The left button was released: how far the frame moved since the press,
    // and its place and size, which the receiver (through a direct
    // connection) may change; the frame takes the values it is left with.
    void EndResize(int DeltaX, int DeltaY, int &Left, int &Top, int &Width, int &Height);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    friend class MoveHandle;
    void pressed(int handle, QPoint local);
    void moved(int handle, QPoint local);
    void released();
    QPoint snapped(QPoint local) const;
    void layoutHandles();

    QPointer<QWidget> mRefObject;
    bool mLockWidthResize = false;
    bool mLockHeightResize = false;
    int mGridAlignSize = 0;

    std::array<MoveHandle *, HandleCount> mHandles {};
    QPoint mPressPoint;
    QPoint mPressTopLeft;
    bool mMoving = false;
};
