// SPDX-License-Identifier: MIT
#pragma once

#include "EditorEnvironment.h"
#include "ShownSelection.h"
#include "SkinReadError.h"

#include <QByteArray>
#include <QImage>
#include <QMainWindow>
#include <QModelIndex>
#include <QPointer>
#include <QVector>

#include <functional>
#include <memory>

class CanvasController;
class CompareFormats;
class DocumentActions;
class EditActions;
class FileDropOpener;
class LayerRenderer;
class MovableShape;
class ObjectTreeModel;
class PowGrid;
class ProblemsController;
class PropertyGridController;
class RecentFiles;
class SaveChangesFlow;
class StatusProgress;
struct RenderSetup;
class QAction;
class QLabel;
class QCheckBox;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QScrollArea;
class QStatusBar;
class QToolBar;
class QTreeView;
class ReloadBar;
class SkinCanvas;
class SkinDocument;
class SkinReloader;
class Splitter;
class TextBoxInfoSink;
class ToolbarImages;
class TreeFilter;
class clsElement;

// The editor's main window: the document's tree, the canvas with the selected
// layer, the property grid and the information box, and the toolbar commands
// that open, save and set up skins. The editing itself is done by the
// controllers it owns: DocumentActions (the tree's menus, undo), the
// CanvasController (picking, dragging, zoom) and the PropertyGridController.
// Its controls are its own; tests find them by their object names.
class frmEditor : public QMainWindow, private ShownSelection
{
    Q_OBJECT

public:
    explicit frmEditor(const EditorEnvironment &environment, QWidget *parent = nullptr);
    ~frmEditor() override;

    // A toolbar button by its key ("Open", "Dir", "Save", "Lock", ...).
    QAction *button(const QString &key) const;
    // The text of a status bar panel, 1 to 3: the selected node, the layer shown,
    // the mouse position.
    QString statusText(int panel) const;

    ObjectTreeModel *objectTree() const { return mTree; }
    // The skin being edited: every change goes through it.
    SkinDocument &skinDocument() const { return *mSkin; }

    // ---- commands -------------------------------------------------------------
    // One handler for every toolbar button, by its key. "Prev" and "Next" are on
    // the toolbar but have no command: moving between layers is done in the tree.
    void tlbMain_ButtonClick(QAction *button);
    void OpenCommand();
    void DirCommand();
    void SaveCommand();
    // File > Save Changes: every changed file written in place, nothing else.
    void SaveChangesCommand();
    // File > Export Picture: the canvas's picture as a PNG file.
    void ExportPictureCommand();
    // File > Port Skin: the skin's folders made for another screen (PortSkinFlow.cpp).
    void PortSkinCommand();
    // View > Compare Formats: the shown layer in another format beside the
    // window, following it (CompareFormatsFlow.cpp).
    void CompareFormatsCommand();
    void LockCommand();
    void SettingsCommand();
    void AboutCommand();

    // Opens one skin file as Open does after its dialog: templates beside it and
    // the shared scheme (imported), then the file itself.
    void openSkinFile(const QString &path);
    // Opens a whole skin folder as Dir does after its dialog: every file of the
    // folder, the shared scheme and the common files, all as part of the skin.
    void openSkinFolder(const QString &folder);

    // Shows modal forms (settings, about). Tests replace it to answer the form.
    std::function<void(QDialog &)> showModalForm;

    // For this run only: the directory becomes the default skin directory, while
    // the settings file keeps what it had unless the user changes the directory.
    void setRunSkinDirectory(const QString &directory);

    // ---- selection and drawing -------------------------------------------------
    // What a click on a tree node does: shows the node's layer, template or
    // object, fills the grid and places the moving frame.
    void NodeClick(const QModelIndex &node);
    // Selects the node in the tree (unfolding the way to it), which runs NodeClick.
    void selectNode(const QModelIndex &node);

    // The whole picture of a layer on the canvas.
    void DrawLayer(const clsElement *layer);
    // The objects of one layer over what the canvas shows.
    void DrawSingleLayer(const clsElement *layer);
    // The canvas drawn again: the layer shown with the current object, or the
    // current template over the default background, and the frame placed again.
    void RefreshCanvas() override;

    // Puts the moving frame around the current object's drawn box (unless Lock
    // is pressed) and fills the grid with the object's properties.
    void PositionMovingTool();
    void HideMovingTool();

    // The object the last selection made current, the block shown on the canvas,
    // and the key of the current object's node.
    clsElement *currentObject() const override { return mCurrentObject; }
    const clsElement *shownLayer() const override { return mShownLayer; }
    QByteArray currentNodeKey() const override { return mCurrentNodeKey; }
    LayerRenderer &renderer() const;
    // The off-screen picture the canvas was last composed in.
    const QImage &offScreenPicture() const { return pctTmp; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    bool frameOnObject() const override { return mFrameOnObject; }
    void selectNodeKey(const QByteArray &nodeKey) override;

    void createControls();
    void createToolbar();
    void createMenus();
    void createPanes();
    void createStatusBar();
    void createControllers();
    void createFileMenu();
    void openRecent(const QString &path);
    void createWatchers();
    void followDocument();

    void ClearDocument();
    void finishLoading();
    void setTitle(const QString &name);
    bool readSkinFile(const QString &path, bool imported);
    void reportReadError(const QString &file, qint64 line, const QString &message);

    void treeCurrentChanged(const QModelIndex &current);
    void showCurrent(const QByteArray &nodeKey);
    void showTopLevel(const QModelIndex &node, clsElement *element, bool isTemplate);
    void showElement(const QModelIndex &node, clsElement *element);
    void clearSelectionDisplay();
    void fillGrid(const clsElement &element, const QByteArray &nodeKey);
    void drawTemplateAlone(const clsElement *tpl);
    void drawShown();
    void followCompare();
    void redrawAfterChange();
    void placeMovingTool();
    QImage freshCanvas();
    void setStatus(int panel, const QString &text);

    // ---- controls -----------------------------------------------------------
    QToolBar *tlbMain = nullptr;
    ToolbarImages *imlMain = nullptr;
    QTreeView *tvwObjects = nullptr;
    SkinCanvas *pctTemplate = nullptr;
    // The off-screen picture a layer is composed in before it goes to the canvas.
    QImage pctTmp;
    MovableShape *mshObject = nullptr;
    PowGrid *pgrProperty = nullptr;
    QLineEdit *txtPropertyFilter = nullptr;
    QCheckBox *chkInherited = nullptr;
    QPlainTextEdit *txtInfo = nullptr;
    QStatusBar *stbMain = nullptr;
    Splitter *splMain = nullptr;
    Splitter *splInfo = nullptr;
    Splitter *splProperty = nullptr;
    QScrollArea *canvasArea = nullptr;
    QMenu *mnuProperty = nullptr;
    QMenu *mnuLayer = nullptr;
    QMenu *mnuAddObject = nullptr;
    QList<QAction *> mnuAddElement;
    QMenu *mnuElement = nullptr;
    QList<QLabel *> mPanels;

    EditorEnvironment mEnv;
    SkinDocument *mSkin = nullptr;
    ObjectTreeModel *mTree = nullptr;
    // The information box as the place where report lines go, and the one
    // resource lookup of the window.
    std::unique_ptr<TextBoxInfoSink> mInfoSink;
    std::unique_ptr<RenderSetup> mRendering;
    DocumentActions *mActions = nullptr;
    EditActions *mEdit = nullptr;
    TreeFilter *mTreeFilter = nullptr;
    CanvasController *mCanvas = nullptr;
    PropertyGridController *mGrid = nullptr;
    SaveChangesFlow *mSaveFlow = nullptr;
    RecentFiles *mRecent = nullptr;
    StatusProgress *mProgress = nullptr;
    ProblemsController *mProblems = nullptr;
    QPointer<CompareFormats> mCompare;
    ReloadBar *mReloadBar = nullptr;
    SkinReloader *mReloader = nullptr;
    FileDropOpener *mDropOpener = nullptr;
    // What was last opened (a file, or a folder with All), to read it again
    // when it changes on disk, and what its reading met.
    QString mOpenedPath;
    bool mOpenedFolder = false;
    QVector<SkinReadError> mReadingErrors;

    clsElement *mCurrentObject = nullptr;
    const clsElement *mShownLayer = nullptr;
    QByteArray mCurrentNodeKey;
    QByteArray mShownLayerKey;
    // The current object is a template drawn alone over the background.
    bool mTemplateShown = false;
    // The current object is an object of the shown layer, with the frame on it.
    bool mFrameOnObject = false;
    // The tree is being moved to the document's current node.
    bool mFollowingCurrent = false;

    QString mRunSkinDirectory;
    QString mSavedSkinDirectory;
    bool mHasRunSkinDirectory = false;
};
