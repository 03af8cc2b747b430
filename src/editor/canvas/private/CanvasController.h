// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QObject>
#include <QPoint>

#include <functional>

class LayerRenderer;
class MovableShape;
class QAction;
class QKeyEvent;
class QLabel;
class QMenu;
class QScrollArea;
class ShownNode;
class SkinCanvas;
class SkinDocument;
class clsElement;

// The mouse and keyboard on the canvas: a click picks the topmost named object,
// a drag of the moving frame or an arrow key moves the current object (as a
// change of the document), Ctrl and the wheel or the View menu zoom. While the
// frame is dragged the object is drawn at its moving place, over the layer
// drawn once without it.
class CanvasController : public QObject
{
    Q_OBJECT

public:
    // The widgets the controller watches, and the window's "Lock" button.
    struct Widgets
    {
        SkinCanvas *canvas;
        MovableShape *frame;
        QScrollArea *area;
        QAction *lock;
    };

    CanvasController(const Widgets &widgets, LayerRenderer &renderer, SkinDocument &document,
                     ShownNode &shown, QObject *parent = nullptr);

    // The zoom entries of a View menu, and the status bar panel that shows it.
    void addZoomActions(QMenu &view);
    QLabel *zoomPanel() const { return mZoomPanel; }

    // Milliseconds on a steady clock, for merging moves that follow each other.
    std::function<qint64()> clock;

    // The topmost named object at a canvas point becomes the selection; true
    // when one was hit and is now the current object.
    bool canvasPressed(QPoint canvasPoint);
    // The current object moved by a distance in canvas pixels, as a drag or an
    // arrow key does.
    void moveCurrentBy(int dx, int dy);
    // The arrow keys move the current object while the frame is on it.
    bool canMoveWithKeys() const;
    // A new document: no drag goes on.
    void forgetDrag();

    void setZoom(int percent);
    void zoomIn();
    void zoomOut();
    void zoomNormal();
    // The largest zoom step at which the whole picture fits the visible area.
    void zoomToFit();
    // One zoom step in (steps > 0) or out, keeping the canvas point under
    // `viewportPoint` (a point of the scroll area's viewport) where it is.
    void zoomAround(QPoint viewportPoint, int steps);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void zoomApplied();
    bool canvasKey(QKeyEvent *event);
    void frameReleased(int dx, int dy, int &left, int &top, int &width, int &height);
    void dragStarted();
    void frameMoving();

    Widgets mWidgets;
    LayerRenderer &mRenderer;
    SkinDocument &mDocument;
    ShownNode &mShown;
    QLabel *mZoomPanel = nullptr;

    // The live drag: the picture without the dragged object, and where the
    // frame stood when the drag began.
    QImage mDragBackground;
    QPoint mDragStart;
    const clsElement *mDragged = nullptr;
};
