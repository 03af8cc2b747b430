// SPDX-License-Identifier: MIT
#include "ShownNode.h"

#include "CanvasSize.h"
#include "LayerRenderer.h"
#include "MovableShape.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "RenderSetup.h"
#include "SkinCanvas.h"
#include "SkinCodec.h"
#include "SkinDocument.h"
#include "clsElement.h"

#include <QAction>

ShownNode::ShownNode(SkinDocument &document, const ObjectTreeModel &tree, RenderSetup &rendering,
                     const Widgets &widgets, QObject *parent)
    : QObject(parent)
    , mDocument(document)
    , mTree(tree)
    , mRendering(rendering)
    , mWidgets(widgets)
{
    setObjectName(QStringLiteral("ShownNode"));
    connect(&document, &SkinDocument::currentChanged, this, &ShownNode::NodeClick);
    const auto touched = [this](const QByteArray &ownerKey) { propertiesChanged(ownerKey); };
    connect(&document, &SkinDocument::propertyChanged, this, touched);
    connect(&document, &SkinDocument::propertyAdded, this, touched);
    connect(&document, &SkinDocument::propertyRemoved, this, touched);
    connect(&document, &SkinDocument::changed, this, &ShownNode::redrawAfterChange);
    connect(&document, &SkinDocument::contextChanged, this, &ShownNode::redrawAfterChange);
}

// Dispatched on the node's own letter, the one of its last segment: a text in
// a layer ("Lui_Main|EtxtTitle") is an object, not the layer. The tree knows
// a header variable's node, whose key has no letter. A node whose key names
// nothing is passed over.
void ShownNode::NodeClick(const QByteArray &nodeKey)
{
    HideMovingTool();
    const QModelIndex node = mTree.indexOfKey(nodeKey);
    const NodeTarget target = mTree.resolve(node);
    const bool header = node.isValid() && mTree.nodeKind(node.parent()) == ObjectTreeNode::Headers;
    switch (mTree.nodeLetter(node)) {
    case 'L':
    case 'U':
    case 'S':
        if (target.element)
            showTopLevel(nodeKey, target.element, false);
        break;
    case 'T':
        if (target.element)
            showTopLevel(nodeKey, target.element, true);
        break;
    case 'E':
        if (target.element)
            showElement(nodeKey, target.element);
        break;
    case 'P':
        NodeClick(mTree.nodeKey(node.parent()));
        break;
    default:
        clear();
        // A header variable has no picture, but its values are still shown.
        if (header && target.element) {
            mCurrentObject = target.element;
            mCurrentObjectKey = nodeKey;
            refillGrid();
        }
        break;
    }
}

// A layer, state or used layer is drawn with its background and used layers; a
// template is drawn alone over the default background.
void ShownNode::showTopLevel(const QByteArray &key, clsElement *element, bool isTemplate)
{
    mCurrentObject = element;
    mCurrentObjectKey = key;
    mShownLayerKey = key;
    mTemplateShown = isTemplate;
    mFrameOnObject = false;
    mRendering.renderer.setHighlighted(nullptr);
    if (isTemplate)
        drawTemplateAlone(element);
    else
        DrawLayer(element);
    emit nodeTextChanged(nodeText(key));
    emit layerNameChanged(SkinCodec::wordText(element->strName()));
    refillGrid();
    emit shown();
}

// The object is shown over its own layer (or template): when another one is on
// the canvas, the parent node is shown first.
void ShownNode::showElement(const QByteArray &key, clsElement *element)
{
    const bool layerShown = mShownLayer && NodeKey(mShownLayerKey).isAncestorOf(NodeKey(key));
    if (!layerShown)
        NodeClick(NodeKey(key).parent());
    HideMovingTool();
    mCurrentObject = element;
    mCurrentObjectKey = key;
    mFrameOnObject = true;
    RefreshCanvas();
    emit nodeTextChanged(nodeText(key));
}

QString ShownNode::nodeText(const QByteArray &key) const
{
    return mTree.nodeText(mTree.indexOfKey(key));
}

void ShownNode::clear()
{
    mCurrentObject = nullptr;
    mShownLayer = nullptr;
    mCurrentObjectKey.clear();
    mShownLayerKey.clear();
    mTemplateShown = false;
    mFrameOnObject = false;
    mRowsStale = false;
    mRendering.renderer.setHighlighted(nullptr);
    mRendering.renderer.forgetDrawnObjects();
    mWidgets.canvas->clearPicture();
    mPicture = QImage();
    emit rowsCleared();
    emit nodeTextChanged(QString());
    emit layerNameChanged(QString());
}

void ShownNode::refillGrid()
{
    mRowsStale = false;
    if (mCurrentObject)
        emit rowsWanted(mCurrentObject, mCurrentObjectKey);
}

QImage ShownNode::freshCanvas() const
{
    QImage canvas(CanvasSize::forSkin(mDocument.context(), mRendering.cache), QImage::Format_RGB32);
    canvas.fill(Qt::black);
    return canvas;
}

// Each drawing has its own information lines: what it misses, every font
// and picture of it, and nothing of an earlier one.
void ShownNode::beginDrawing() const
{
    emit drawingStarted();
    mRendering.fonts.newDrawing();
}

void ShownNode::DrawLayer(const clsElement *layer)
{
    beginDrawing();
    mPicture = freshCanvas();
    mRendering.renderer.DrawLayer(layer, mPicture);
    mShownLayer = layer;
    mWidgets.canvas->setPicture(mPicture);
}

void ShownNode::DrawSingleLayer(const clsElement *layer)
{
    if (mPicture.isNull())
        mPicture = freshCanvas();
    mRendering.renderer.DrawSingleLayer(layer, mPicture);
    mWidgets.canvas->setPicture(mPicture);
}

// The default background with the template alone on it.
void ShownNode::drawTemplateAlone(const clsElement *tpl)
{
    beginDrawing();
    mPicture = freshCanvas();
    mRendering.renderer.DrawLayer(nullptr, mPicture);
    mRendering.renderer.DrawElement(tpl, mPicture, 0, 0, false);
    mShownLayer = tpl;
    mWidgets.canvas->setPicture(mPicture);
}

QImage ShownNode::pictureWithoutSelection() const
{
    if (!mShownLayer)
        return mPicture;
    LayerRenderer &renderer = mRendering.renderer;
    const clsElement *highlighted = mFrameOnObject ? mCurrentObject : nullptr;
    renderer.setHighlighted(nullptr);
    beginDrawing();
    QImage picture = freshCanvas();
    if (mTemplateShown) {
        renderer.DrawLayer(nullptr, picture);
        renderer.DrawElement(mShownLayer, picture, 0, 0, false);
    } else {
        renderer.DrawLayer(mShownLayer, picture);
    }
    renderer.setHighlighted(highlighted);
    return picture;
}

void ShownNode::RefreshCanvas()
{
    if (!mShownLayer)
        return;
    drawShown();
    if (mFrameOnObject)
        PositionMovingTool();
}

void ShownNode::drawShown()
{
    const clsElement *object = mFrameOnObject ? mCurrentObject : nullptr;
    mRendering.renderer.setHighlighted(object);
    if (mTemplateShown)
        drawTemplateAlone(mShownLayer);
    else
        DrawLayer(mShownLayer);
    // An object the layer does not draw itself (one inside another object, or
    // inside a template) is drawn over the picture.
    if (object && mRendering.renderer.boxOf(object) == DrawnBox()) {
        mRendering.renderer.DrawElement(object, mPicture, 0, 0, true);
        mWidgets.canvas->setPicture(mPicture);
    }
    emit shown();
}

void ShownNode::propertiesChanged(const QByteArray &ownerKey)
{
    if (mCurrentObject && mDocument.elementAt(ownerKey) == mCurrentObject)
        mRowsStale = true;
}

// Once the change is whole (a move sets "x" and "y"): what is shown is looked
// up again by its keys, as the change may have taken it out of the document,
// the canvas drawn again, and the grid filled again when the change touched
// the current object's properties.
void ShownNode::redrawAfterChange()
{
    if (!mCurrentObject && !mShownLayer)
        return;
    clsElement *object = mDocument.elementAt(mCurrentObjectKey);
    if (mShownLayer) {
        const clsElement *layer = mDocument.elementAt(mShownLayerKey);
        if (!layer || (mFrameOnObject && !object)) {
            clear();
            return;
        }
        mShownLayer = layer;
        mCurrentObject = object;
        drawShown();
        placeMovingTool();
    } else {
        mCurrentObject = object;
    }
    if (mRowsStale)
        refillGrid();
}

void ShownNode::PositionMovingTool()
{
    if (!mCurrentObject)
        return;
    emit rowsCleared();
    placeMovingTool();
    refillGrid();
}

void ShownNode::placeMovingTool()
{
    if (!mCurrentObject || !mFrameOnObject)
        return;
    const bool locked = mWidgets.lock->isChecked();
    // A text without a picture is framed where its text was printed.
    const QRect object = mWidgets.canvas->toWidget(mRendering.renderer.boxOf(mCurrentObject).shownRect());
    const int handle = mWidgets.frame->handleSize();
    mWidgets.frame->setGeometry(object.adjusted(-handle, -handle, handle, handle));
    mWidgets.frame->raise();
    mWidgets.frame->setVisible(!locked);
}

void ShownNode::HideMovingTool()
{
    mWidgets.frame->hide();
}
