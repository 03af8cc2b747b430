#pragma once

#include "EditorEnvironment.h"

#include <QImage>
#include <QModelIndex>
#include <QObject>
#include <QPoint>
#include <QRect>

#include <functional>
#include <memory>

class ObjectTreeModel;
class PowGridItem;
class SkinDocument;
class QAction;
class QLabel;
class QMenu;
class QUndoStack;
class ResourceLookup;
class TextBoxInfoSink;
class clsElement;
class frmEditor;

// The editing of the open skin in the main window: the tree's pop-up menus and
// double-click prompt, the values stored from the property grid and its
// choosers, picking and dragging objects on the canvas, arrow-key moves, and
// the undo stack that every change goes through.
class SkinEditing : public QObject
{
    Q_OBJECT

public:
    SkinEditing(frmEditor &form, const EditorEnvironment &environment);
    ~SkinEditing() override;

    QUndoStack &undoStack() const;
    QAction *undoAction() const { return mUndo; }
    QAction *redoAction() const { return mRedo; }

    // Shows a pop-up menu at a screen point and returns the entry chosen
    // (nothing when the menu was closed). Tests replace it to choose.
    std::function<QAction *(QMenu &menu, QPoint globalPoint)> popUpMenu;
    // Milliseconds on a steady clock, for merging moves that follow each other.
    std::function<qint64()> clock;

    // ---- tree -------------------------------------------------------------------
    // Right mouse button released over a node: select it, then offer its menu.
    void nodeRightReleased(const QModelIndex &node, QPoint globalPoint);
    // The menu a node offers: mnuProperty, mnuLayer, mnuElement or none.
    QMenu *menuFor(const QModelIndex &node) const;
    void nodeDoubleClicked(const QModelIndex &node);

    // ---- menu commands, on the selected node --------------------------------------
    void AddElement(const QString &type);
    void AddLayer();
    void AddProperty();
    void RemoveSelected();

    // ---- property grid --------------------------------------------------------------
    void gridItemChanged(PowGridItem *item, int column);

    // ---- canvas ---------------------------------------------------------------------
    // The topmost named object at a canvas point becomes the selection.
    void canvasPressed(QPoint canvasPoint);
    // The current object moved by a distance in canvas pixels, as a drag or an
    // arrow key does.
    void moveCurrentBy(int dx, int dy);
    // The arrow keys move the current object while the frame is on it.
    bool canMoveWithKeys() const;

    // ---- unsaved changes --------------------------------------------------------------
    // True when the work may be left: nothing unsaved, or the user saved or
    // chose to discard it. Cancel (or a failed save) answers false.
    bool mayDiscardChanges();
    // The document now equals the file (just opened or saved).
    void markSaved();
    // A new document: nothing to undo.
    void forgetHistory();

    // ---- zoom of the canvas ---------------------------------------------------------------
    void setZoom(int percent);
    void zoomIn();
    void zoomOut();
    void zoomNormal();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createUndoActions();
    void createZoomActions();
    void zoomApplied();
    void connectTree();
    void connectMenus();
    void connectCanvas();
    void valueCommitted(PowGridItem *item);
    void chooseColour(PowGridItem *item);
    void chooseImage(PowGridItem *item);
    void frameReleased(int dx, int dy, int &left, int &top, int &width, int &height);
    void dragStarted();
    void frameMoving();
    bool canvasKey(class QKeyEvent *event);
    QPoint canvasDistance(QPoint widgetDistance) const;
    QByteArray selectedKey() const;
    char selectedLetter() const;
    static char ownLetter(const ObjectTreeModel &tree, const QModelIndex &node);
    void updateModifiedPanel();

    frmEditor &mForm;
    EditorEnvironment mEnv;
    SkinDocument &mSkin;
    ObjectTreeModel &mTree;
    QUndoStack *mStack = nullptr;
    std::unique_ptr<TextBoxInfoSink> mInfoSink;
    std::unique_ptr<ResourceLookup> mLookup;
    QAction *mUndo = nullptr;
    QAction *mRedo = nullptr;
    QLabel *mModified = nullptr;
    QLabel *mZoomPanel = nullptr;

    // The live drag: the picture without the dragged object, and where the
    // frame stood when the drag began.
    QImage mDragBackground;
    QPoint mDragStart;
    const clsElement *mDragged = nullptr;
};
