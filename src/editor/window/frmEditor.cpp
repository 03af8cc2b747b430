// SPDX-License-Identifier: MIT
#include "frmEditor.h"

#include "ApplicationInfo.h"
#include "CanvasController.h"
#include "CanvasSize.h"
#include "Dialogs.h"
#include "DocumentActions.h"
#include "EditActions.h"
#include "EditorSettings.h"
#include "FileDropOpener.h"
#include "GridStepSetting.h"
#include "HourglassCursor.h"
#include "LayerRenderer.h"
#include "MovableShape.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PowGrid.h"
#include "ProblemsController.h"
#include "PropertyGridController.h"
#include "ReloadBar.h"
#include "RenderSetup.h"
#include "PictureExport.h"
#include "RecentFiles.h"
#include "SaveChangesFlow.h"
#include "StatusProgress.h"
#include "SettingsFile.h"
#include "SkinCanvas.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "SkinFileNames.h"
#include "SkinFolderListing.h"
#include "SkinLoader.h"
#include "SkinReloader.h"
#include "SkinReadError.h"
#include "Splitter.h"
#include "TextBoxInfoSink.h"
#include "ToolbarImages.h"
#include "TreeFilter.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"
#include "frmAbout.h"
#include "frmSettings.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <new>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QUndoStack>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

// A folder holding more than this shows a progress bar while it is read.
constexpr qint64 kLargeFolderBytes = 2 * 1024 * 1024;

const QString kSkinFilter = QStringLiteral("User Interface File Korvi8|*.ui");

struct ButtonSpec
{
    const char *key;
    const char *caption;
    const char *toolTip;
};

const ButtonSpec kButtons[] = {
    { "Open", "Open", "Open Template File" },
    { "Dir", "All", "Open All Template Directory" },
    { "Save", "Save", "Save Skin" },
    { "Lock", "Move", "Lock move" },
    { "Settings", "Settings", "Edit General Settings" },
    { "Prev", "Prev", "Previous Layer" },
    { "Next", "Next", "Next Layer" },
    { "About", "About", "About" },
};

// The element types offered by "Add Object". Entry 0 is the one the menu always
// has; the others are made at start-up.
const char *const kFirstElementType = "TEXT";
const char *const kMoreElementTypes[] = { "SPRITE", "BUTTON", "CHECKBOX", "SLIDER",
                                          "HSCROLLBAR", "LIST", "PUSHBUTTON" };

// A message box must not show the hourglass of the command that asks it.
Dialogs::Button askWithArrow(Dialogs &dialogs, const QString &title, const QString &text,
                             Dialogs::Icon icon, Dialogs::Buttons buttons = Dialogs::Buttons::Ok)
{
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const Dialogs::Button answer = dialogs.message(title, text, icon, buttons);
    QApplication::restoreOverrideCursor();
    return answer;
}

} // namespace

frmEditor::frmEditor(const EditorEnvironment &environment, QWidget *parent)
    : QMainWindow(parent)
    , mEnv(environment)
{
    setObjectName(QStringLiteral("frmEditor"));
    showModalForm = [](QDialog &form) { form.exec(); };
    // Start-up: the controls with the grid's columns and the "Add Object"
    // entries, then the settings; no file is opened and there is nothing to
    // save yet.
    createControls();
    SkinContext context = mSkin->context();
    mEnv.settings.ReadSettings(context.SkinDirectory);
    mSkin->setContext(context);
    button(QStringLiteral("Save"))->setEnabled(false);
    setWindowTitle(ApplicationInfo::windowTitle() + QStringLiteral("[*]"));
    resize(1320, 860);
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
    createToolbar();
    createPanes();
    createStatusBar();
    createMenus();

    mInfoSink = std::make_unique<TextBoxInfoSink>(txtInfo);
    mRendering = std::make_unique<RenderSetup>(mEnv.document, mEnv.context, *mInfoSink);
    createControllers();
    createWatchers();
    followDocument();
}

void frmEditor::createControllers()
{
    mActions = new DocumentActions(*mSkin, *mTree, *tvwObjects,
                                   { mnuProperty, mnuLayer, mnuElement, mnuAddElement }, mEnv.dialogs, this);
    mProgress = new StatusProgress(this);
    mSaveFlow = new SaveChangesFlow(*mSkin, mEnv.document, mEnv.dialogs, *mProgress, this);
    mActions->save = [this] { SaveCommand(); };
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
                                   mRendering->renderer, *mSkin, *this, this);
    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    mCanvas->addZoomActions(*view);
    view->addSeparator();
    new GridStepSetting(*mshObject, EditorSettings(mEnv.settings), mEnv.dialogs, *view, this);
    view->addAction(QStringLiteral("&Compare Formats..."), this, &frmEditor::CompareFormatsCommand)
        ->setObjectName(QStringLiteral("mnuCompareFormats"));
    stbMain->addPermanentWidget(mCanvas->zoomPanel());

    mGrid = new PropertyGridController(*pgrProperty, *mSkin, mRendering->lookup, mEnv.dialogs, *this, this);
    mGrid->keepColumnWidths(EditorSettings(mEnv.settings));
    mGrid->setFilterField(*txtPropertyFilter);
    mGrid->setInheritedToggle(*chkInherited, EditorSettings(mEnv.settings));
    mProblems = new ProblemsController(*mSkin, *this, *stbMain, this);
}

void frmEditor::createFileMenu()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    const auto add = [this, file](const char *name, const QString &text, const QKeySequence &keys, auto command) {
        QAction *action = file->addAction(text, this, command);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        return action;
    };
    add("mnuOpen", QStringLiteral("&Open..."), QKeySequence::Open, &frmEditor::OpenCommand);
    add("mnuOpenFolder", QStringLiteral("Open &Folder..."), QKeySequence(), &frmEditor::DirCommand);
    QMenu *recent = file->addMenu(QStringLiteral("Recent &Files"));
    recent->setObjectName(QStringLiteral("mnuRecent"));
    mRecent = new RecentFiles(EditorSettings(mEnv.settings), recent, this);
    connect(mRecent, &RecentFiles::openRequested, this, &frmEditor::openRecent);
    file->addSeparator();
    add("mnuSaveChanges", QStringLiteral("&Save Changes"), QKeySequence(Qt::CTRL | Qt::Key_S),
        &frmEditor::SaveChangesCommand)->setEnabled(false);
    add("mnuSaveAs", QStringLiteral("Save &As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
        &frmEditor::SaveCommand)->setEnabled(false);
    file->addSeparator();
    add("mnuExportPicture", QStringLiteral("&Export Picture..."), QKeySequence(), &frmEditor::ExportPictureCommand);
    add("mnuPortSkin", QStringLiteral("&Port Skin..."), QKeySequence(), &frmEditor::PortSkinCommand);
    file->addSeparator();
    add("mnuQuit", QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), &QWidget::close);
}

// A recent file opens as Open opens it, a recent folder as Open Folder.
void frmEditor::openRecent(const QString &path)
{
    if (!mActions->mayDiscardChanges())
        return;
    if (QFileInfo(path).isDir())
        openSkinFolder(path);
    else
        openSkinFile(path);
}

// The skin's files on disk, and files dropped on the window.
void frmEditor::createWatchers()
{
    mReloader = new SkinReloader(*mSkin, *mTree, *tvwObjects, *mReloadBar, this);
    mReloader->reopen = [this] {
        if (mOpenedFolder)
            openSkinFolder(mOpenedPath);
        else
            openSkinFile(mOpenedPath);
    };
    mReloader->tell = [this](const QString &text) { stbMain->showMessage(text, 10000); };
    mDropOpener = new FileDropOpener(*this);
    mDropOpener->mayDiscardChanges = [this] { return mActions->mayDiscardChanges(); };
    mDropOpener->openFile = [this](const QString &file) { openSkinFile(file); };
    mDropOpener->openFolder = [this](const QString &folder) { openSkinFolder(folder); };
}

// The views follow the document: a new current node is shown whole; a change
// redraws the canvas, and refills the grid when it touched the current object.
void frmEditor::followDocument()
{
    connect(mSkin, &SkinDocument::currentChanged, this, &frmEditor::showCurrent);
    connect(mSkin, &SkinDocument::changed, this, &frmEditor::redrawAfterChange);
    connect(mSkin, &SkinDocument::contextChanged, this, &frmEditor::redrawAfterChange);
    // The history is clean exactly when the skin is as last opened or saved.
    connect(&mSkin->undoStack(), &QUndoStack::cleanChanged, this, [this](bool clean) { setWindowModified(!clean); });
}

void frmEditor::createToolbar()
{
    tlbMain = new QToolBar(QStringLiteral("tlbMain"), this);
    tlbMain->setObjectName(QStringLiteral("tlbMain"));
    tlbMain->setMovable(false);
    tlbMain->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    tlbMain->setIconSize(QSize(24, 24));
    for (const ButtonSpec &spec : kButtons) {
        const QString key = QString::fromLatin1(spec.key);
        QAction *action = tlbMain->addAction(QString::fromLatin1(spec.caption));
        action->setObjectName(key);
        action->setToolTip(QString::fromLatin1(spec.toolTip));
        action->setIcon(imlMain->image(key == QLatin1String("Lock") ? QStringLiteral("LockOff") : key));
        action->setCheckable(key == QLatin1String("Lock"));
    }
    addToolBar(Qt::TopToolBarArea, tlbMain);
    connect(tlbMain, &QToolBar::actionTriggered, this, &frmEditor::tlbMain_ButtonClick);
}

void frmEditor::createPanes()
{
    tvwObjects = new QTreeView;
    tvwObjects->setObjectName(QStringLiteral("tvwObjects"));
    tvwObjects->setHeaderHidden(true);
    // Every row is one line high: the view need not measure a hundred thousand
    // rows to place its scroll bar.
    tvwObjects->setUniformRowHeights(true);
    tvwObjects->setModel(mTree);
    connect(tvwObjects->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &frmEditor::treeCurrentChanged);

    pgrProperty = new PowGrid;
    pgrProperty->setObjectName(QStringLiteral("pgrProperty"));
    txtPropertyFilter = new QLineEdit;
    txtPropertyFilter->setObjectName(QStringLiteral("txtPropertyFilter"));
    txtPropertyFilter->setPlaceholderText(QStringLiteral("Filter properties"));
    txtPropertyFilter->setClearButtonEnabled(true);
    auto *propertyPane = new QWidget;
    auto *propertyLayout = new QVBoxLayout(propertyPane);
    propertyLayout->setContentsMargins(0, 0, 0, 0);
    propertyLayout->setSpacing(2);
    chkInherited = new QCheckBox(QStringLiteral("Inherited"));
    chkInherited->setObjectName(QStringLiteral("chkInherited"));
    chkInherited->setToolTip(QStringLiteral("Also list the values taken from templates and font types"));
    auto *filterLine = new QHBoxLayout;
    filterLine->addWidget(txtPropertyFilter);
    filterLine->addWidget(chkInherited);
    propertyLayout->addLayout(filterLine);
    propertyLayout->addWidget(pgrProperty);

    pctTemplate = new SkinCanvas;
    pctTemplate->setObjectName(QStringLiteral("pctTemplate"));
    mshObject = new MovableShape(pctTemplate);
    mshObject->setObjectName(QStringLiteral("mshObject"));
    mshObject->hide();
    connect(pctTemplate, &SkinCanvas::mouseMovedTo, this, [this](QPoint p) {
        setStatus(3, QStringLiteral("X:%1 Y:%2").arg(p.x()).arg(p.y()));
    });
    canvasArea = new QScrollArea;
    canvasArea->setObjectName(QStringLiteral("canvasArea"));
    canvasArea->setWidget(pctTemplate);
    canvasArea->setWidgetResizable(false);
    canvasArea->setBackgroundRole(QPalette::Dark);

    txtInfo = new QPlainTextEdit;
    txtInfo->setObjectName(QStringLiteral("txtInfo"));
    txtInfo->setReadOnly(true);

    // Tree over grid on the left; canvas over information box on the right.
    splProperty = new Splitter;
    splProperty->setObjectName(QStringLiteral("splProperty"));
    splProperty->setSplitterOrientation(Splitter::OneAboveTheOther);
    mTreeFilter = new TreeFilter(*tvwObjects, *mTree, *mSkin, this);
    splProperty->setControls(mTreeFilter->pane(), propertyPane);
    splProperty->setSplitterPosition(6600);

    splInfo = new Splitter;
    splInfo->setObjectName(QStringLiteral("splInfo"));
    splInfo->setSplitterOrientation(Splitter::OneAboveTheOther);
    // The bar that asks about files changed on disk stands above the canvas.
    mReloadBar = new ReloadBar;
    auto *canvasPane = new QWidget;
    canvasPane->setObjectName(QStringLiteral("canvasPane"));
    auto *canvasLayout = new QVBoxLayout(canvasPane);
    canvasLayout->setContentsMargins(0, 0, 0, 0);
    canvasLayout->setSpacing(0);
    canvasLayout->addWidget(mReloadBar);
    canvasLayout->addWidget(canvasArea, 1);
    splInfo->setControls(canvasPane, txtInfo);
    splInfo->setSplitterPosition(7800);

    splMain = new Splitter(this);
    splMain->setObjectName(QStringLiteral("splMain"));
    splMain->setSplitterOrientation(Splitter::SideBySide);
    splMain->setControls(splProperty, splInfo);
    splMain->setSplitterPosition(5700);
    setCentralWidget(splMain);

    // A moved bar changes what the canvas shows of the layer: draw it again.
    connect(splMain, &Splitter::EndResize, this, &frmEditor::RefreshCanvas);
    connect(splInfo, &Splitter::EndResize, this, &frmEditor::RefreshCanvas);
}

void frmEditor::createStatusBar()
{
    stbMain = new QStatusBar(this);
    stbMain->setObjectName(QStringLiteral("stbMain"));
    for (int i = 0; i < 3; ++i) {
        auto *panel = new QLabel;
        panel->setObjectName(QStringLiteral("stbPanel%1").arg(i + 1));
        panel->setMinimumWidth(i == 2 ? 120 : 220);
        stbMain->addWidget(panel, i == 0 ? 2 : 1);
        mPanels << panel;
    }
    setStatusBar(stbMain);
}

void frmEditor::createMenus()
{
    mnuProperty = new QMenu(QStringLiteral("Property"), this);
    mnuProperty->setObjectName(QStringLiteral("mnuProperty"));
    mnuProperty->addAction(QStringLiteral("Remove Property"))->setObjectName(QStringLiteral("mnuRemoveProperty"));

    mnuLayer = new QMenu(QStringLiteral("Layer"), this);
    mnuLayer->setObjectName(QStringLiteral("mnuLayer"));
    mnuAddObject = mnuLayer->addMenu(QStringLiteral("Add Object"));
    mnuAddObject->setObjectName(QStringLiteral("mnuAddObject"));
    mnuAddElement << mnuAddObject->addAction(QString::fromLatin1(kFirstElementType));
    for (const char *type : kMoreElementTypes)
        mnuAddElement << mnuAddObject->addAction(QString::fromLatin1(type));
    mnuLayer->addAction(QStringLiteral("Add New Layer"))->setObjectName(QStringLiteral("mnuAddLayer"));
    mnuLayer->addAction(QStringLiteral("Remove Layer"))->setObjectName(QStringLiteral("mnuRemoveLayer"));

    mnuElement = new QMenu(QStringLiteral("Element"), this);
    mnuElement->setObjectName(QStringLiteral("mnuElement"));
    mnuElement->addAction(QStringLiteral("Add Property"))->setObjectName(QStringLiteral("mnuAddProperty"));
    mnuElement->addAction(QStringLiteral("Remove Object"))->setObjectName(QStringLiteral("mnuRemoveObject"));
}

QAction *frmEditor::button(const QString &key) const
{
    for (QAction *action : tlbMain->actions()) {
        if (action->objectName() == key)
            return action;
    }
    return nullptr;
}

QString frmEditor::statusText(int panel) const
{
    return panel >= 1 && panel <= mPanels.size() ? mPanels.at(panel - 1)->text() : QString();
}

void frmEditor::setStatus(int panel, const QString &text)
{
    if (panel >= 1 && panel <= mPanels.size())
        mPanels.at(panel - 1)->setText(text);
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
    if (!mActions->mayDiscardChanges())
        return;
    const QString start = mEnv.context.UiFilePath.isEmpty()
        ? mEnv.context.SkinDirectory
        : QFileInfo(mEnv.context.UiFilePath).absolutePath();
    const QString path = mEnv.dialogs.openFileName(QStringLiteral("Open Template File"), start, kSkinFilter);
    if (path.isEmpty())
        return;
    openSkinFile(path);
}

void frmEditor::openSkinFile(const QString &path)
{
    ClearDocument();
    HourglassCursor hourglass;
    const QFileInfo file(path);
    mOpenedPath = file.absoluteFilePath();
    mOpenedFolder = false;
    setTitle(file.fileName());
    SkinContext context = mSkin->context();
    const QString format = SkinLoader::skinFormatFromFileName(path);
    if (!format.isEmpty())
        context.SkinFormat = format;
    context.UiFilePath = file.absoluteFilePath();
    mSkin->setContext(context);
    mSaveFlow->openedFile(context.UiFilePath);
    mRecent->add(path);
    mSkin->reload([this, &path](clsKorviInterface &document) {
        SkinLoader::openSkinFile(document, path, [this](const SkinReadError &error) {
            reportReadError(error.file(), error.line(), error.message());
        });
    });
    finishLoading();
}

void frmEditor::DirCommand()
{
    if (!mActions->mayDiscardChanges())
        return;
    const QString folder = mEnv.dialogs.folder(QStringLiteral("Select Skin ui Directory"),
                                               mEnv.context.SkinDirectory);
    if (folder.isEmpty())
        return;
    openSkinFolder(folder);
}

void frmEditor::openSkinFolder(const QString &folder)
{
    ClearDocument();
    HourglassCursor hourglass;
    mOpenedPath = QFileInfo(folder).absoluteFilePath();
    mOpenedFolder = true;
    setTitle(folder);

    // Everything is read as part of the skin here, the shared scheme and the
    // common files included, unlike Open, which marks templates as imported.
    SkinContext context = mSkin->context();
    mSaveFlow->openedFolder(folder);
    mRecent->add(folder);
    mSkin->reload([this, &folder, &context](clsKorviInterface &) {
        QString lastFile;
        const QStringList files = SkinFolderListing::uiFilesIn(folder);
        mProgress->beginFiles(files, kLargeFolderBytes);
        for (const QString &file : files) {
            readSkinFile(file, false);
            mProgress->fileDone(file);
            const QString format = SkinLoader::skinFormatFromFileName(file);
            if (!format.isEmpty())
                context.SkinFormat = format;
            lastFile = file;
        }
        // The pictures of the skin are looked up from its ui folder, and saving
        // offers the last file of the folder.
        context.UiFilePath = lastFile.isEmpty() ? QDir(folder).filePath(QStringLiteral("skin.ui"))
                                                : QFileInfo(lastFile).absoluteFilePath();
        const QString scheme = QDir::cleanPath(folder + QStringLiteral("/../main_scheme.ui"));
        if (SkinFileNames::FileExists(scheme))
            readSkinFile(scheme, false);
        const QString common = QDir::cleanPath(folder + QStringLiteral("/../../common/ui"));
        for (const QString &file : SkinFolderListing::uiFilesIn(common))
            readSkinFile(file, false);
        mProgress->end();
    });
    mSkin->setContext(context);
    finishLoading();
}

bool frmEditor::readSkinFile(const QString &path, bool imported)
{
    try {
        ReadUiFile(mEnv.document, path, imported);
        return true;
    } catch (const SkinReadError &error) {
        reportReadError(error.file(), error.line(), error.message());
    } catch (const std::bad_alloc &) {
        // What was read of the file stays, marked as read in part, so that
        // it is never saved over the whole file.
        reportReadError(path, 0, QStringLiteral("not enough memory to read %1 (%2 MB)")
                                     .arg(path).arg((QFileInfo(path).size() + (1 << 20) - 1) >> 20));
    }
    return false;
}

// What was read before the line stays in the document, and the other files are
// still read.
void frmEditor::reportReadError(const QString &file, qint64 line, const QString &message)
{
    mSaveFlow->noteReadError(file, line);
    mReadingErrors.append(SkinReadError(file, line, message));
    askWithArrow(mEnv.dialogs, QStringLiteral("Read Skin File"),
                 QStringLiteral("Error reading %1, line %2:\r\n%3").arg(file).arg(line).arg(message),
                 Dialogs::Icon::Warning);
}

void frmEditor::ClearDocument()
{
    HideMovingTool();
    clearSelectionDisplay();
    mCanvas->forgetDrag();
    mReadingErrors.clear();
    mSkin->reload({});
}

void frmEditor::finishLoading()
{
    mRendering->fonts.loadSkinFonts(mEnv.context);
    // The canvas shows the skin's background until a node is chosen.
    DrawLayer(nullptr);
    button(QStringLiteral("Save"))->setEnabled(true);
    for (const char *name : { "mnuSaveChanges", "mnuSaveAs" })
        findChild<QAction *>(QString::fromLatin1(name))->setEnabled(true);
    mProblems->skinOpened(mReadingErrors, mOpenedFolder);
    mReloader->skinOpened();
}

void frmEditor::SaveCommand()
{
    if (!mSaveFlow->mayWriteWholeDocument())
        return;
    const QString path = mEnv.dialogs.saveFileName(QStringLiteral("Save Skin"),
                                                   mSaveFlow->saveAsStart(mEnv.context.UiFilePath), kSkinFilter);
    if (path.isEmpty())
        return;
    if (SkinFileNames::FileExists(path)) {
        const auto answer = mEnv.dialogs.message(QStringLiteral("Save File"),
                                                 QStringLiteral("File already exists, do you want to overwrite?"),
                                                 Dialogs::Icon::Question, Dialogs::Buttons::YesNo);
        if (answer != Dialogs::Button::Yes)
            return;
    }
    setTitle(QFileInfo(path).fileName());
    HourglassCursor hourglass;
    const bool saved = WriteUiFile(mEnv.document, path, [this](const QString &message) {
        askWithArrow(mEnv.dialogs, ApplicationInfo::windowTitle(), message, Dialogs::Icon::Warning);
    });
    hourglass.restore();
    if (saved) {
        mSaveFlow->wholeDocumentWritten(path);
        mActions->markSaved();
        mReloader->skinSaved();
        mEnv.dialogs.message(QStringLiteral("Save File"), QStringLiteral("Saving complete"));
    }
}

void frmEditor::SaveChangesCommand()
{
    mSaveFlow->saveChanges();
}

void frmEditor::ExportPictureCommand()
{
    const QString start = mEnv.context.UiFilePath.isEmpty() ? mEnv.context.SkinDirectory
                                                            : QFileInfo(mEnv.context.UiFilePath).absolutePath();
    PictureExport::ask(mEnv.dialogs, pctTmp, start);
}

void frmEditor::LockCommand()
{
    QAction *lock = button(QStringLiteral("Lock"));
    lock->setIcon(imlMain->image(lock->isChecked() ? QStringLiteral("LockOn") : QStringLiteral("LockOff")));
    PositionMovingTool();
}

void frmEditor::SettingsCommand()
{
    SkinContext context = mSkin->context();
    frmSettings form(context, mEnv.dialogs, this);
    showModalForm(form);
    mSkin->setContext(context);
}

void frmEditor::AboutCommand()
{
    frmAbout form(mEnv.web, this);
    showModalForm(form);
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
    QMainWindow::closeEvent(event);
}

// ---- selection and drawing ----------------------------------------------------------

// A node chosen in the tree becomes the document's current node. Two nodes
// may share a key (header variables without a name): the node is shown anyway.
void frmEditor::treeCurrentChanged(const QModelIndex &current)
{
    if (mFollowingCurrent)
        return;
    const QByteArray key = mTree->nodeKey(current);
    if (key == mSkin->currentKey())
        NodeClick(current);
    else
        mSkin->setCurrent(key);
}

// A new current node: the tree shows it selected, and it is shown whole.
void frmEditor::showCurrent(const QByteArray &nodeKey)
{
    const QModelIndex node = mTree->indexOfKey(nodeKey);
    if (tvwObjects->currentIndex() != node) {
        mFollowingCurrent = true;
        for (QModelIndex up = node.parent(); up.isValid(); up = up.parent())
            tvwObjects->expand(up);
        tvwObjects->setCurrentIndex(node);
        tvwObjects->scrollTo(node);
        mFollowingCurrent = false;
    }
    NodeClick(node);
}

void frmEditor::selectNodeKey(const QByteArray &nodeKey)
{
    const QModelIndex node = mTree->indexOfKey(nodeKey);
    if (node.isValid())
        selectNode(node);
}

void frmEditor::selectNode(const QModelIndex &node)
{
    for (QModelIndex up = node.parent(); up.isValid(); up = up.parent())
        tvwObjects->expand(up);
    if (tvwObjects->currentIndex() == node)
        NodeClick(node);
    else
        tvwObjects->setCurrentIndex(node);
    tvwObjects->scrollTo(node);
}

void frmEditor::NodeClick(const QModelIndex &node)
{
    HideMovingTool();
    const QByteArray key = mTree->nodeKey(node);
    const NodeTarget target = mTree->resolve(node);
    const bool header = node.isValid() && mTree->nodeKind(node.parent()) == ObjectTreeNode::Headers;
    // Dispatched on the node's own letter, the one of its last segment: a
    // text in a layer ("Lui_Main|EtxtTitle") is an object, not the layer. A
    // node whose key names nothing is passed over.
    switch (mTree->nodeLetter(node)) {
    case 'L':
    case 'U':
    case 'S':
        if (target.element)
            showTopLevel(node, target.element, false);
        break;
    case 'T':
        if (target.element)
            showTopLevel(node, target.element, true);
        break;
    case 'E':
        if (target.element)
            showElement(node, target.element);
        break;
    case 'P':
        NodeClick(node.parent());
        break;
    default:
        clearSelectionDisplay();
        // A header variable has no picture, but its values are still shown.
        if (header && target.element) {
            mCurrentObject = target.element;
            mCurrentNodeKey = key;
            fillGrid(*target.element, key);
        }
        break;
    }
}

// A layer, state or used layer is drawn with its background and used layers; a
// template is drawn alone over the default background.
void frmEditor::showTopLevel(const QModelIndex &node, clsElement *element, bool isTemplate)
{
    mCurrentObject = element;
    mCurrentNodeKey = mTree->nodeKey(node);
    mShownLayerKey = mCurrentNodeKey;
    mTemplateShown = isTemplate;
    mFrameOnObject = false;
    mRendering->renderer.setHighlighted(nullptr);
    if (isTemplate)
        drawTemplateAlone(element);
    else
        DrawLayer(element);
    setStatus(1, mTree->nodeText(node));
    setStatus(2, QString::fromLatin1(element->strName()));
    fillGrid(*element, mCurrentNodeKey);
}

void frmEditor::showElement(const QModelIndex &node, clsElement *element)
{
    const QByteArray key = mTree->nodeKey(node);
    // The object is shown over its own layer (or template): when another one is
    // on the canvas, the parent node is shown first.
    const bool layerShown = NodeKey(mShownLayerKey).isAncestorOf(NodeKey(key)) && mShownLayer;
    if (!layerShown)
        NodeClick(node.parent());
    HideMovingTool();
    mCurrentObject = element;
    mCurrentNodeKey = key;
    mFrameOnObject = true;
    RefreshCanvas();
    setStatus(1, mTree->nodeText(node));
}

void frmEditor::clearSelectionDisplay()
{
    mCurrentObject = nullptr;
    mShownLayer = nullptr;
    mCurrentNodeKey.clear();
    mShownLayerKey.clear();
    mTemplateShown = false;
    mFrameOnObject = false;
    mRendering->renderer.setHighlighted(nullptr);
    mRendering->renderer.forgetDrawnObjects();
    pctTemplate->clearPicture();
    pctTmp = QImage();
    mGrid->clear();
    for (int panel = 1; panel <= 2; ++panel)
        setStatus(panel, QString());
}

void frmEditor::fillGrid(const clsElement &element, const QByteArray &nodeKey)
{
    mGrid->fill(element, nodeKey);
}

QImage frmEditor::freshCanvas()
{
    QImage canvas(CanvasSize::forSkin(mEnv.context, mRendering->cache), QImage::Format_RGB32);
    canvas.fill(Qt::black);
    return canvas;
}

void frmEditor::DrawLayer(const clsElement *layer)
{
    pctTmp = freshCanvas();
    mRendering->renderer.DrawLayer(layer, pctTmp);
    mShownLayer = layer;
    pctTemplate->setPicture(pctTmp);
}

void frmEditor::DrawSingleLayer(const clsElement *layer)
{
    if (pctTmp.isNull())
        pctTmp = freshCanvas();
    mRendering->renderer.DrawSingleLayer(layer, pctTmp);
    pctTemplate->setPicture(pctTmp);
}

// The default background with the template alone on it.
void frmEditor::drawTemplateAlone(const clsElement *tpl)
{
    pctTmp = freshCanvas();
    mRendering->renderer.DrawLayer(nullptr, pctTmp);
    mRendering->renderer.DrawElement(tpl, pctTmp, 0, 0, false);
    mShownLayer = tpl;
    pctTemplate->setPicture(pctTmp);
}

void frmEditor::RefreshCanvas()
{
    if (!mShownLayer)
        return;
    drawShown();
    if (mFrameOnObject)
        PositionMovingTool();
}

void frmEditor::drawShown()
{
    const clsElement *object = mFrameOnObject ? mCurrentObject : nullptr;
    mRendering->renderer.setHighlighted(object);
    if (mTemplateShown)
        drawTemplateAlone(mShownLayer);
    else
        DrawLayer(mShownLayer);
    // An object the layer does not draw itself (one inside another object, or
    // inside a template) is drawn over the picture.
    if (object && mRendering->renderer.boxOf(object) == DrawnBox()) {
        mRendering->renderer.DrawElement(object, pctTmp, 0, 0, true);
        pctTemplate->setPicture(pctTmp);
    }
    followCompare();
}

// What is shown is looked up again by its keys: the change may have taken it
// out of the document.
void frmEditor::redrawAfterChange()
{
    if (!mShownLayer)
        return;
    const clsElement *layer = mSkin->elementAt(mShownLayerKey);
    clsElement *object = mSkin->elementAt(mCurrentNodeKey);
    if (!layer || (mFrameOnObject && !object)) {
        clearSelectionDisplay();
        return;
    }
    mShownLayer = layer;
    mCurrentObject = object;
    drawShown();
    placeMovingTool();
}

void frmEditor::PositionMovingTool()
{
    if (!mCurrentObject)
        return;
    mGrid->clear();
    placeMovingTool();
    fillGrid(*mCurrentObject, mCurrentNodeKey);
}

void frmEditor::placeMovingTool()
{
    if (!mCurrentObject || !mFrameOnObject)
        return;
    const bool locked = button(QStringLiteral("Lock"))->isChecked();
    // A text without a picture is framed where its text was printed.
    const QRect object = pctTemplate->toWidget(mRendering->renderer.boxOf(mCurrentObject).shownRect());
    const int handle = mshObject->handleSize();
    mshObject->setGeometry(object.adjusted(-handle, -handle, handle, handle));
    mshObject->raise();
    mshObject->setVisible(!locked);
}

void frmEditor::HideMovingTool()
{
    mshObject->hide();
}
