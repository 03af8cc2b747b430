// SPDX-License-Identifier: MIT
#pragma once

#include "clsElement.h"

#include <QByteArray>
#include <QImage>
#include <QObject>

class MovableShape;
class ObjectTreeModel;
class QAction;
class SkinCanvas;
class SkinDocument;
struct RenderSetup;

// What the editor shows of the document's current node: the layer, state or
// template drawn on the canvas, the object framed on it, and the element whose
// properties the grid lists. It follows the document alone (its current node
// and its changes), so every view that picks a node only calls
// SkinDocument::setCurrent, and the canvas is drawn and the grid filled once
// per change, whoever made it.
class ShownNode : public QObject
{
    Q_OBJECT

public:
    // The canvas with its moving frame, and the "Lock" button that hides it.
    struct Widgets
    {
        SkinCanvas *canvas;
        MovableShape *frame;
        QAction *lock;
    };

    ShownNode(SkinDocument &document, const ObjectTreeModel &tree, RenderSetup &rendering,
              const Widgets &widgets, QObject *parent = nullptr);

    // ---- what is shown --------------------------------------------------------
    // The layer, state or template drawn on the canvas; none when nothing is.
    const clsElement *shownLayer() const { return mShownLayer; }
    // The element or template the current node shows, and its node key (the
    // owner's key for a property node).
    clsElement *currentObject() const { return mCurrentObject; }
    QByteArray currentNodeKey() const { return mCurrentObjectKey; }
    // The current object is an object of the shown layer with the frame on it.
    bool frameOnObject() const { return mFrameOnObject; }
    // The off-screen picture the canvas was last composed in.
    const QImage &picture() const { return mPicture; }
    // What is shown drawn as the device would draw it: the selected object
    // not drawn inverted. The picture above when no layer or template is shown.
    QImage pictureWithoutSelection() const;

    // ---- showing ----------------------------------------------------------------
    // Shows the node with this key: its layer, template or object, the frame
    // and the grid's rows. The document's current node runs it.
    void NodeClick(const QByteArray &nodeKey);
    // The whole picture of a layer (the background alone for none).
    void DrawLayer(const clsElement *layer);
    // The objects of one layer over what the canvas shows.
    void DrawSingleLayer(const clsElement *layer);
    // The canvas drawn again: the layer shown with the current object, or the
    // current template over the default background, and the frame placed again.
    void RefreshCanvas();
    // Puts the moving frame around the current object's drawn box (unless Lock
    // is pressed) and fills the grid with the object's properties again.
    void PositionMovingTool();
    void HideMovingTool();
    // Nothing shown: no layer, no object, an empty grid and canvas.
    void clear();
    // The grid lists the current object's properties again.
    void refillGrid();

signals:
    // The grid lists the properties of `element` (never null), whose node key
    // is `nodeKey`; or nothing. A pointer, not a reference: the signal's
    // argument types must not need the element to be constructible.
    void rowsWanted(const clsElement *element, const QByteArray &nodeKey);
    void rowsCleared();
    // The texts of the status bar's first two panels: the node shown, the
    // layer drawn.
    void nodeTextChanged(const QString &text);
    void layerNameChanged(const QString &text);
    // The canvas shows the current layer (and object) anew.
    void shown();
    // A layer or template is about to be drawn: the information lines of
    // the drawing before are done with.
    void drawingStarted() const;

private:
    void showTopLevel(const QByteArray &key, clsElement *element, bool isTemplate);
    void showElement(const QByteArray &key, clsElement *element);
    void drawTemplateAlone(const clsElement *tpl);
    void drawShown();
    void placeMovingTool();
    void propertiesChanged(const QByteArray &ownerKey);
    void redrawAfterChange();
    QImage freshCanvas() const;
    void beginDrawing() const;
    QString nodeText(const QByteArray &key) const;

    SkinDocument &mDocument;
    const ObjectTreeModel &mTree;
    RenderSetup &mRendering;
    Widgets mWidgets;
    QImage mPicture;

    clsElement *mCurrentObject = nullptr;
    const clsElement *mShownLayer = nullptr;
    QByteArray mCurrentObjectKey;
    QByteArray mShownLayerKey;
    // The current object is a template drawn alone over the background.
    bool mTemplateShown = false;
    bool mFrameOnObject = false;
    // The current object's properties changed since the grid was filled.
    bool mRowsStale = false;
};
