// SPDX-License-Identifier: MIT
#pragma once

#include "EditorEnvironment.h"

#include <QByteArray>
#include <QImage>
#include <QMainWindow>
#include <QModelIndex>

#include <memory>

class CanvasController;
class CodePageChoice;
class CompareFormatsFlow;
class DocumentActions;
class EditActions;
class FileCommands;
class FileDropOpener;
class LayerRenderer;
class MovableShape;
class ObjectTreeModel;
class PortSkinFlow;
class PowGrid;
class ProblemsController;
class PropertyGridController;
class RecentFiles;
class SaveChangesFlow;
class ShownNode;
class SkinOpener;
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
struct MainSplitters;
class TextBoxInfoSink;
class ToolbarImages;
class TreeFilter;
class clsElement;

// The editor's main window: the document's tree, the canvas with the selected
// layer, the property grid and the information box, and the toolbar commands
// that open, save and set up skins. It builds and lays out the controls and
// wires them to the parts that do the work: the SkinDocument holds the skin and
// the one current node, ShownNode shows that node (canvas, frame, grid rows),
// SkinOpener reads skins, DocumentActions and EditActions edit the tree, the
// CanvasController picks and drags, the PropertyGridController edits values.
// Its controls are its own; tests find them by their object names.
class frmEditor : public QMainWindow
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
    // File > Port Skin: the skin's folders made for another screen.
    void PortSkinCommand();
    // View > Compare Formats: the shown layer in another format beside the
    // window, following it.
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

    // For this run only: the directory becomes the default skin directory, while
    // the settings file keeps what it had unless the user changes the directory.
    void setRunSkinDirectory(const QString &directory);

    // ---- what is shown ------------------------------------------------------
    // Makes the node the document's current node; the tree, the canvas and the
    // grid follow.
    void selectNode(const QModelIndex &node);
    // Shows the node (its layer, template or object, the frame and the grid)
    // without making it current.
    void NodeClick(const QModelIndex &node);

    // What the current node shows: its object, the block on the canvas, the
    // off-screen picture the canvas was composed in.
    ShownNode &shownNode() const { return *mShown; }
    LayerRenderer &renderer() const;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createControls();
    void createPanes();
    void createControllers();
    void createFileMenu();
    void createWatchers();
    void createPortFlow();
    void placeOnFirstStart();
    MainSplitters splitters() const;
    void skinOpened();
    const clsElement *firstLayerOfSkin() const;
    void setTitle(const QString &name);

    // ---- controls -----------------------------------------------------------
    QToolBar *tlbMain = nullptr;
    ToolbarImages *imlMain = nullptr;
    QTreeView *tvwObjects = nullptr;
    SkinCanvas *pctTemplate = nullptr;
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
    CodePageChoice *mCodePages = nullptr;
    SaveChangesFlow *mSaveFlow = nullptr;
    RecentFiles *mRecent = nullptr;
    StatusProgress *mProgress = nullptr;
    ProblemsController *mProblems = nullptr;
    CompareFormatsFlow *mCompareFlow = nullptr;
    PortSkinFlow *mPortFlow = nullptr;
    ReloadBar *mReloadBar = nullptr;
    SkinReloader *mReloader = nullptr;
    FileDropOpener *mDropOpener = nullptr;
    FileCommands *mFiles = nullptr;
    SkinOpener *mOpener = nullptr;
    ShownNode *mShown = nullptr;

    QString mRunSkinDirectory;
    QString mSavedSkinDirectory;
    bool mHasRunSkinDirectory = false;
};
