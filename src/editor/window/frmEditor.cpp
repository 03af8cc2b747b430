// SPDX-License-Identifier: MIT
#include "frmEditor.h"

#include "ApplicationInfo.h"
#include "CanvasController.h"
#include "CanvasPane.h"
#include "Dialogs.h"
#include "DocumentActions.h"
#include "EditActions.h"
#include "CodePageChoice.h"
#include "CompareFormatsFlow.h"
#include "EditorSettings.h"
#include "FileCommands.h"
#include "FileDropOpener.h"
#include "GridContextMenu.h"
#include "GridStepSetting.h"
#include "MainStatusBar.h"
#include "MainSplitters.h"
#include "MainToolbar.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "ObjectTreeView.h"
#include "PortSkinFlow.h"
#include "ProblemsController.h"
#include "PropertyGridController.h"
#include "PropertyPane.h"
#include "ReloadBar.h"
#include "RenderSetup.h"
#include "SaveChangesFlow.h"
#include "SettingsFile.h"
#include "ShownNode.h"
#include "SkinCanvas.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "SkinOpener.h"
#include "SkinReloader.h"
#include "SkinSourceFile.h"
#include "Splitter.h"
#include "StatusProgress.h"
#include "TextBoxInfoSink.h"
#include "ToolbarImages.h"
#include "TreeFilter.h"
#include "TreeFollower.h"
#include "frmAbout.h"
#include "frmSettings.h"
#include "clsKorviInterface.h"

#include <QAction>
#include <QDockWidget>
#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStyle>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QUndoStack>

#include <algorithm>

namespace {

// Below this free area a first start takes the whole screen.
constexpr QSize kRoomyScreen(1600, 900);

} // namespace

frmEditor::frmEditor(const EditorEnvironment &environment, QWidget *parent)
    : QMainWindow(parent)
    , mEnv(environment)
{
    setObjectName(QStringLiteral("frmEditor"));
    // Start-up: the controls with the grid's columns and the "Add Object"
    // entries, then the settings; no file is opened and there is nothing to
    // save yet.
    createControls();
    SkinContext context = mSkin->context();
    mEnv.settings.ReadSettings(context.SkinDirectory);
    mSkin->setContext(context);
    button(QStringLiteral("Save"))->setEnabled(false);
    setWindowTitle(ApplicationInfo::windowTitle() + QStringLiteral("[*]"));
    // Where the user left the window, its panels and its bars, when there was
    // a last time; else a place that fits the screen.
    const EditorSettings settings(mEnv.settings);
    if (!restoreGeometry(settings.windowGeometry()))
        placeOnFirstStart();
    restoreState(settings.windowState());
    splitters().setPositions(settings.splitterPositions());
}

MainSplitters frmEditor::splitters() const
{
    MainSplitters splitters;
    splitters.main = splMain;
    splitters.info = splInfo;
    splitters.property = splProperty;
    return splitters;
}

// The screen's free area, whole and maximised on screens smaller than
// 1600 x 900, where every pixel counts; else most of it, in the middle. The
// Problems panel takes a few lines at the bottom, and the bars give the
// canvas and the property grid the room.
void frmEditor::placeOnFirstStart()
{
    const QRect free = screen()->availableGeometry();
    const bool small = free.width() < kRoomyScreen.width() || free.height() < kRoomyScreen.height();
    const QSize size = small ? free.size() : free.size() * 0.85;
    setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, free));
    if (small)
        setWindowState(windowState() | Qt::WindowMaximized);
    const int problems = std::clamp(size.height() / 8, 80, 200);
    resizeDocks({ mProblems->dock() }, { problems }, Qt::Vertical);
    // Menus, toolbar, status bar and window frame take about this much.
    constexpr int kChrome = 130;
    splitters().fitTo(QSize(size.width(), size.height() - kChrome - problems));
}

LayerRenderer &frmEditor::renderer() const
{
    return mRendering->renderer;
}

frmEditor::~frmEditor()
{
    // The controllers watch the controls' events; they go before them.
    delete mEdit;
    delete mTreeFilter;
    delete mActions;
    delete mCanvas;
    delete mGrid;
    // The view goes before the model it shows.
    delete tvwObjects;
    tvwObjects = nullptr;
}

// ---- controls ------------------------------------------------------------------

void frmEditor::createControls()
{
    imlMain = new ToolbarImages;
    mSkin = new SkinDocument(mEnv.document, mEnv.context, this);
    mTree = new ObjectTreeModel(*mSkin, this);
    tlbMain = MainToolbar::create(*this, *imlMain);
    addToolBar(Qt::TopToolBarArea, tlbMain);
    connect(tlbMain, &QToolBar::actionTriggered, this, &frmEditor::tlbMain_ButtonClick);
    createPanes();
    stbMain = MainStatusBar::create(mPanels);
    setStatusBar(stbMain);

    mInfoSink = std::make_unique<TextBoxInfoSink>(txtInfo);
    mRendering = std::make_unique<RenderSetup>(mEnv.document, mEnv.context, *mInfoSink);
    createControllers();
    createWatchers();
    // The history is clean exactly when the skin is as last opened or saved.
    connect(&mSkin->undoStack(), &QUndoStack::cleanChanged, this, [this](bool clean) { setWindowModified(!clean); });
}

void frmEditor::createControllers()
{
    // What the current node shows follows the document, as the tree does.
    mShown = new ShownNode(*mSkin, *mTree, *mRendering, { pctTemplate, mshObject, button(QStringLiteral("Lock")) },
                           this);
    connect(mShown, &ShownNode::nodeTextChanged, mPanels.at(0), &QLabel::setText);
    connect(mShown, &ShownNode::layerNameChanged, mPanels.at(1), &QLabel::setText);
    // The information box is a log of the drawing shown.
    connect(mShown, &ShownNode::drawingStarted, txtInfo, &QPlainTextEdit::clear);
    new TreeFollower(*tvwObjects, *mTree, *mSkin, this);
    mActions = new DocumentActions(*mSkin, *mTree, *tvwObjects, DocumentActions::createMenus(*this), mEnv.dialogs,
                                   this);
    mProgress = new StatusProgress(this);
    mSaveFlow = new SaveChangesFlow(*mSkin, mEnv.document, mEnv.dialogs, *mProgress, this);
    connect(mActions, &DocumentActions::saveWanted, this, &frmEditor::SaveCommand);
    createFileMenu();
    mEdit = new EditActions(*mSkin, *mTree, *mActions, mEnv.dialogs, this);
    mEdit->addMenuTo(*menuBar(), { mTreeFilter->findAction() });
    tlbMain->addSeparator();
    tlbMain->addAction(mActions->undoAction());
    tlbMain->addAction(mActions->redoAction());
    stbMain->addPermanentWidget(mActions->modifiedPanel());
    stbMain->addPermanentWidget(mSaveFlow->changesPanel());
    stbMain->addPermanentWidget(mProgress->bar());

    mCanvas = new CanvasController({ pctTemplate, mshObject, canvasArea, button(QStringLiteral("Lock")) },
                                   mRendering->renderer, *mSkin, *mShown, this);
    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    mCanvas->addZoomActions(*view);
    view->addSeparator();
    new GridStepSetting(*mshObject, EditorSettings(mEnv.settings), mEnv.dialogs, *view, this);
    mCompareFlow = new CompareFormatsFlow(mEnv, *mShown, *canvasArea, *this);
    view->addAction(QStringLiteral("&Compare Formats..."), mCompareFlow, &CompareFormatsFlow::run)
        ->setObjectName(QStringLiteral("mnuCompareFormats"));
    mCodePages = new CodePageChoice(*mSkin, EditorSettings(mEnv.settings), *view, *stbMain, this);
    stbMain->addPermanentWidget(mCanvas->zoomPanel());

    mGrid = new PropertyGridController(*pgrProperty, *mSkin, mRendering->lookup, mEnv.dialogs, this);
    connect(mShown, &ShownNode::rowsWanted, mGrid,
            [this](const clsElement *element, const QByteArray &nodeKey) { mGrid->fill(*element, nodeKey); });
    connect(mShown, &ShownNode::rowsCleared, mGrid, &PropertyGridController::clear);
    connect(mGrid, &PropertyGridController::rowsWanted, mShown, &ShownNode::refillGrid);
    mGrid->keepColumnWidths(EditorSettings(mEnv.settings));
    mGrid->setFilterField(*txtPropertyFilter);
    mGrid->setInheritedToggle(*chkInherited, EditorSettings(mEnv.settings));
    mEdit->aimDeleteAt(*mGrid);
    auto *gridMenu = new GridContextMenu(*pgrProperty, *mGrid, *mSkin, this);
    connect(gridMenu, &GridContextMenu::addPropertyWanted, this, [this](const QByteArray &owner) {
        mSkin->setCurrent(owner);
        mActions->AddProperty();
    });
    connect(mActions, &DocumentActions::removed, this, [this](const QString &what) { stbMain->showMessage(what, 10000); });
    mProblems = new ProblemsController(*mSkin, *this, *stbMain, this);
    QAction *problems = mProblems->dock()->toggleViewAction();
    problems->setObjectName(QStringLiteral("mnuProblems"));
    problems->setText(QStringLiteral("&Problems"));
    view->addAction(problems);
    createPortFlow();
}

void frmEditor::createPortFlow()
{
    mPortFlow = new PortSkinFlow(mEnv, { *mSkin, *mActions, *mOpener, *mProgress, *mShown }, *this);
    connect(mFiles, &FileCommands::portSkinChosen, mPortFlow, &PortSkinFlow::run);
    connect(mPortFlow, &PortSkinFlow::told, stbMain, [this](const QString &text) { stbMain->showMessage(text); });
    connect(mPortFlow, &PortSkinFlow::reported, txtInfo, &QPlainTextEdit::appendPlainText);
    connect(mPortFlow, &PortSkinFlow::notesFound, mProblems, &ProblemsController::showNotes);
}

void frmEditor::createFileMenu()
{
    mFiles = new FileCommands(mEnv, { *mSkin, *mActions, *mSaveFlow, *mProgress, *mShown }, this);
    mFiles->addMenuTo(*menuBar(), *this);
    mOpener = &mFiles->opener();
    connect(mOpener, &SkinOpener::aboutToOpen, this, [this] {
        mShown->HideMovingTool();
        mShown->clear();
        mCanvas->forgetDrag();
    });
    connect(mFiles, &FileCommands::titleChanged, this, &frmEditor::setTitle);
    // The skin's code page first: what is drawn and checked next reads its text.
    connect(mOpener, &SkinOpener::opened, this, [this] { mCodePages->skinOpened(mSkin->context().UiFilePath); });
    connect(mOpener, &SkinOpener::opened, this, &frmEditor::skinOpened);
    connect(mSaveFlow, &SaveChangesFlow::saveAsWanted, mFiles, &FileCommands::saveAs);
    connect(mFiles, &FileCommands::wholeSkinSaved, this, [this] {
        mActions->markSaved();
        // The file written is the one watched from now on.
        mReloader->skinOpened(mOpener->plan().paths());
    });
}

// The skin's files on disk, and files dropped on the window.
void frmEditor::createWatchers()
{
    mReloader = new SkinReloader(*mSkin, *mTree, *tvwObjects, *mReloadBar, this);
    connect(mReloader, &SkinReloader::reopenWanted, mOpener, &SkinOpener::reopen);
    connect(mReloader, &SkinReloader::told, this, [this](const QString &text) { stbMain->showMessage(text, 10000); });
    connect(mSaveFlow, &SaveChangesFlow::mergedOnDisk, mReloader, &SkinReloader::mergedOnDisk);
    mDropOpener = new FileDropOpener(*this);
    connect(mDropOpener, &FileDropOpener::dropped, mFiles, &FileCommands::openPath);
}

void frmEditor::createPanes()
{
    tvwObjects = ObjectTreeView::create(*mTree);

    const PropertyPane properties = PropertyPane::create();
    pgrProperty = properties.grid;
    txtPropertyFilter = properties.filter;
    chkInherited = properties.inherited;
    // The bar that asks about files changed on disk stands above the canvas.
    mReloadBar = new ReloadBar;
    const CanvasPane canvas = CanvasPane::create(mReloadBar);
    pctTemplate = canvas.canvas;
    mshObject = canvas.frame;
    canvasArea = canvas.area;
    connect(pctTemplate, &SkinCanvas::mouseMovedTo, this, [this](QPoint p) {
        mPanels.at(2)->setText(QStringLiteral("X:%1 Y:%2").arg(p.x()).arg(p.y()));
    });

    txtInfo = new QPlainTextEdit;
    txtInfo->setObjectName(QStringLiteral("txtInfo"));
    txtInfo->setReadOnly(true);

    mTreeFilter = new TreeFilter(*tvwObjects, *mTree, *mSkin, this);
    const MainSplitters splitters = MainSplitters::create(mTreeFilter->pane(), properties.pane, canvas.pane, txtInfo);
    splMain = splitters.main;
    splInfo = splitters.info;
    splProperty = splitters.property;
    setCentralWidget(splMain);

    // A moved bar changes what the canvas shows of the layer: draw it again.
    connect(splMain, &Splitter::EndResize, this, [this] { mShown->RefreshCanvas(); });
    connect(splInfo, &Splitter::EndResize, this, [this] { mShown->RefreshCanvas(); });
}

QAction *frmEditor::button(const QString &key) const
{
    return MainToolbar::button(*tlbMain, key);
}

QString frmEditor::statusText(int panel) const
{
    return panel >= 1 && panel <= mPanels.size() ? mPanels.at(panel - 1)->text() : QString();
}

void frmEditor::setTitle(const QString &name)
{
    // "[*]" is where Qt shows the window's modified marker.
    setWindowTitle(ApplicationInfo::windowTitle() + QStringLiteral(" <") + name + QStringLiteral(">[*]"));
}

// ---- commands --------------------------------------------------------------------

void frmEditor::tlbMain_ButtonClick(QAction *button)
{
    const QString key = button ? button->objectName() : QString();
    if (key == QLatin1String("Dir"))
        DirCommand();
    else if (key == QLatin1String("Open"))
        OpenCommand();
    else if (key == QLatin1String("Save"))
        SaveCommand();
    else if (key == QLatin1String("Lock"))
        LockCommand();
    else if (key == QLatin1String("About"))
        AboutCommand();
    else if (key == QLatin1String("Settings"))
        SettingsCommand();
    // "Prev" and "Next" have no case on purpose: layers are chosen in the tree.
}

void frmEditor::OpenCommand()
{
    mFiles->open();
}

void frmEditor::openSkinFile(const QString &path)
{
    mOpener->openFile(path);
}

void frmEditor::DirCommand()
{
    mFiles->openFolder();
}

void frmEditor::openSkinFolder(const QString &folder)
{
    mOpener->openFolder(folder);
}

// The first layer of the skin is shown at once (the first of the file opened,
// not of the shared files read with it); a skin without layers shows its
// background until a node is chosen.
void frmEditor::skinOpened()
{
    mRendering->fonts.loadSkinFonts(mEnv.context);
    mShown->DrawLayer(nullptr);
    if (const clsElement *layer = firstLayerOfSkin())
        mSkin->setCurrent(NodeKey::block(*layer).bytes());
    button(QStringLiteral("Save"))->setEnabled(true);
    for (const char *name : { "mnuSaveChanges", "mnuSaveAs" })
        findChild<QAction *>(QString::fromLatin1(name))->setEnabled(true);
    mProblems->skinOpened(mOpener->readingErrors(), mOpener->openedFolder());
    mReloader->skinOpened(mOpener->plan().paths());
}

const clsElement *frmEditor::firstLayerOfSkin() const
{
    const clsKorviInterface &document = mSkin->document();
    const clsElement *first = nullptr;
    for (const clsElement *layer : document.Layers()) {
        if (layer->ElementType() != "LAYER")
            continue;
        const SkinSourceFile *file = document.Sources().file(layer->sourceFile());
        if (file && !file->imported())
            return layer;
        if (!first)
            first = layer;
    }
    return first;
}

void frmEditor::SaveCommand()
{
    mFiles->saveAs();
}

void frmEditor::SaveChangesCommand()
{
    mFiles->saveChanges();
}

void frmEditor::PortSkinCommand()
{
    mPortFlow->run();
}

void frmEditor::CompareFormatsCommand()
{
    mCompareFlow->run();
}

void frmEditor::ExportPictureCommand()
{
    mFiles->exportPicture();
}

void frmEditor::LockCommand()
{
    QAction *lock = button(QStringLiteral("Lock"));
    lock->setIcon(imlMain->image(lock->isChecked() ? QStringLiteral("LockOn") : QStringLiteral("LockOff")));
    mShown->PositionMovingTool();
}

void frmEditor::SettingsCommand()
{
    SkinContext context = mSkin->context();
    frmSettings form(context, mEnv.dialogs, this);
    mEnv.dialogs.showForm(form);
    mSkin->setContext(context);
}

void frmEditor::AboutCommand()
{
    frmAbout form(mEnv.web, this);
    mEnv.dialogs.showForm(form);
}

void frmEditor::setRunSkinDirectory(const QString &directory)
{
    mSavedSkinDirectory = mEnv.context.SkinDirectory;
    mRunSkinDirectory = directory;
    mHasRunSkinDirectory = true;
    SkinContext context = mSkin->context();
    context.SkinDirectory = directory;
    mSkin->setContext(context);
}

void frmEditor::closeEvent(QCloseEvent *event)
{
    if (!mActions->mayDiscardChanges()) {
        event->ignore();
        return;
    }
    const bool keepSaved = mHasRunSkinDirectory && mEnv.context.SkinDirectory == mRunSkinDirectory;
    mEnv.settings.WriteSettings(keepSaved ? mSavedSkinDirectory : mEnv.context.SkinDirectory);
    const EditorSettings settings(mEnv.settings);
    settings.setWindowGeometry(saveGeometry());
    settings.setWindowState(saveState());
    settings.setSplitterPositions(splitters().positions());
    QMainWindow::closeEvent(event);
}

// ---- what is shown -------------------------------------------------------------------

void frmEditor::selectNode(const QModelIndex &node)
{
    mSkin->setCurrent(mTree->nodeKey(node));
}

void frmEditor::NodeClick(const QModelIndex &node)
{
    mShown->NodeClick(mTree->nodeKey(node));
}
