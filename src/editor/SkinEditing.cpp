#include "SkinEditing.h"

#include "AsciiCase.h"
#include "CanvasHitTest.h"
#include "ColorValueText.h"
#include "Dialogs.h"
#include "DragPosition.h"
#include "LayerRenderer.h"
#include "LiveDrag.h"
#include "MovableShape.h"
#include "ChangeValueCommand.h"
#include "ElementCommands.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PowGrid.h"
#include "PowGridItem.h"
#include "PropertyDefaults.h"
#include "PropertyGridFiller.h"
#include "PropertyCommands.h"
#include "ResourceLookup.h"
#include "SkinCanvas.h"
#include "SkinDocument.h"
#include "TextBoxInfoSink.h"
#include "clsKorviInterface.h"
#include "frmEditor.h"

#include <QAction>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeView>
#include <QScrollArea>
#include <QUndoStack>
#include <QWheelEvent>

namespace {

const QString kImageFilter = QStringLiteral("Korvi Image Files (*.bmp;*.spr)|*.bmp;*.spr|All Files|*.*");

QByteArray latin1(const QString &text)
{
    return text.toLatin1();
}


} // namespace

SkinEditing::SkinEditing(frmEditor &form, const EditorEnvironment &environment)
    : QObject(&form)
    , mForm(form)
    , mEnv(environment)
    , mSkin(form.skinDocument())
    , mTree(*form.objectTree())
    , mStack(&form.skinDocument().undoStack())
{
    setObjectName(QStringLiteral("SkinEditing"));
    popUpMenu = [](QMenu &menu, QPoint globalPoint) { return menu.exec(globalPoint); };
    auto timer = std::make_shared<QElapsedTimer>();
    timer->start();
    clock = [timer] { return timer->elapsed(); };
    mInfoSink = std::make_unique<TextBoxInfoSink>(form.txtInfo);
    mLookup = std::make_unique<ResourceLookup>(mEnv.context, *mInfoSink);

    createUndoActions();
    connectTree();
    connectMenus();
    connectCanvas();
    createZoomActions();
    connect(form.pgrProperty, &PowGrid::ItemChanged, this, &SkinEditing::gridItemChanged);
}

SkinEditing::~SkinEditing() = default;

QUndoStack &SkinEditing::undoStack() const
{
    return *mStack;
}

// ---- set-up ------------------------------------------------------------------------

void SkinEditing::createUndoActions()
{
    QStyle *style = mForm.style();
    mUndo = new QAction(style->standardIcon(QStyle::SP_ArrowBack), QStringLiteral("Undo"), this);
    mUndo->setObjectName(QStringLiteral("Undo"));
    mUndo->setShortcut(QKeySequence::Undo);
    mUndo->setEnabled(false);
    mRedo = new QAction(style->standardIcon(QStyle::SP_ArrowForward), QStringLiteral("Redo"), this);
    mRedo->setObjectName(QStringLiteral("Redo"));
    mRedo->setShortcut(QKeySequence::Redo);
    mRedo->setEnabled(false);
    connect(mUndo, &QAction::triggered, mStack, &QUndoStack::undo);
    connect(mRedo, &QAction::triggered, mStack, &QUndoStack::redo);
    connect(mStack, &QUndoStack::canUndoChanged, mUndo, &QAction::setEnabled);
    connect(mStack, &QUndoStack::canRedoChanged, mRedo, &QAction::setEnabled);
    connect(mStack, &QUndoStack::undoTextChanged, this,
            [this](const QString &text) { mUndo->setToolTip(QStringLiteral("Undo ") + text); });
    connect(mStack, &QUndoStack::redoTextChanged, this,
            [this](const QString &text) { mRedo->setToolTip(QStringLiteral("Redo ") + text); });

    QMenu *edit = mForm.menuBar()->addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));
    edit->addAction(mUndo);
    edit->addAction(mRedo);
    mForm.tlbMain->addSeparator();
    mForm.tlbMain->addAction(mUndo);
    mForm.tlbMain->addAction(mRedo);

    mModified = new QLabel;
    mModified->setObjectName(QStringLiteral("stbModified"));
    mModified->setMinimumWidth(110);
    mForm.stbMain->addPermanentWidget(mModified);
    connect(mStack, &QUndoStack::cleanChanged, this, &SkinEditing::updateModifiedPanel);
    updateModifiedPanel();
}

void SkinEditing::createZoomActions()
{
    QMenu *view = mForm.menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    const auto add = [this, view](const QString &name, const QString &text, const QKeySequence &keys,
                                  void (SkinEditing::*slot)()) {
        QAction *action = view->addAction(text);
        action->setObjectName(name);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    add(QStringLiteral("ZoomIn"), QStringLiteral("Zoom In"), QKeySequence::ZoomIn, &SkinEditing::zoomIn);
    add(QStringLiteral("ZoomOut"), QStringLiteral("Zoom Out"), QKeySequence::ZoomOut, &SkinEditing::zoomOut);
    add(QStringLiteral("ZoomNormal"), QStringLiteral("Actual Size"), QKeySequence(Qt::CTRL | Qt::Key_0),
        &SkinEditing::zoomNormal);
    mForm.canvasArea->viewport()->installEventFilter(this);
    mZoomPanel = new QLabel(QStringLiteral("100 %"));
    mZoomPanel->setObjectName(QStringLiteral("stbZoom"));
    mForm.stbMain->addPermanentWidget(mZoomPanel);
}

void SkinEditing::setZoom(int percent)
{
    mForm.pctTemplate->setZoomPercent(percent);
    zoomApplied();
}

void SkinEditing::zoomIn()
{
    mForm.pctTemplate->zoomIn();
    zoomApplied();
}

void SkinEditing::zoomOut()
{
    mForm.pctTemplate->zoomOut();
    zoomApplied();
}

void SkinEditing::zoomNormal()
{
    setZoom(CanvasZoom::Normal);
}

// The frame follows the object to its place at the new zoom.
void SkinEditing::zoomApplied()
{
    if (mForm.mshObject->isVisible() && mForm.currentObject())
        mForm.RefreshCanvas();
    mZoomPanel->setText(QStringLiteral("%1 %").arg(mForm.pctTemplate->zoomPercent()));
}

void SkinEditing::connectTree()
{
    QTreeView *tree = mForm.tvwObjects;
    // The pop-up menu comes on the release of the right button.
    tree->setContextMenuPolicy(Qt::PreventContextMenu);
    tree->viewport()->installEventFilter(this);
    connect(tree, &QTreeView::doubleClicked, this, &SkinEditing::nodeDoubleClicked);
}

void SkinEditing::connectMenus()
{
    for (QAction *entry : mForm.mnuAddElement)
        connect(entry, &QAction::triggered, this, [this, entry] { AddElement(entry->text()); });
    const auto byName = [](QMenu *menu, const QString &name) -> QAction * {
        for (QAction *action : menu->actions()) {
            if (action->objectName() == name)
                return action;
        }
        return nullptr;
    };
    connect(byName(mForm.mnuLayer, QStringLiteral("mnuAddLayer")), &QAction::triggered, this,
            &SkinEditing::AddLayer);
    connect(byName(mForm.mnuLayer, QStringLiteral("mnuRemoveLayer")), &QAction::triggered, this,
            &SkinEditing::RemoveSelected);
    connect(byName(mForm.mnuElement, QStringLiteral("mnuAddProperty")), &QAction::triggered, this,
            &SkinEditing::AddProperty);
    connect(byName(mForm.mnuElement, QStringLiteral("mnuRemoveObject")), &QAction::triggered, this,
            &SkinEditing::RemoveSelected);
    connect(byName(mForm.mnuProperty, QStringLiteral("mnuRemoveProperty")), &QAction::triggered, this,
            &SkinEditing::RemoveSelected);
}

void SkinEditing::connectCanvas()
{
    mForm.pctTemplate->installEventFilter(this);
    mForm.pctTemplate->setFocusPolicy(Qt::ClickFocus);
    mForm.mshObject->installEventFilter(this);
    connect(mForm.mshObject, &MovableShape::StartMove, this, &SkinEditing::dragStarted);
    connect(mForm.mshObject, &MovableShape::EndResize, this, &SkinEditing::frameReleased,
            Qt::DirectConnection);
}

bool SkinEditing::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == mForm.tvwObjects->viewport() && event->type() == QEvent::MouseButtonRelease) {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::RightButton) {
            const QPoint point = mouse->position().toPoint();
            nodeRightReleased(mForm.tvwObjects->indexAt(point),
                              mForm.tvwObjects->viewport()->mapToGlobal(point));
            return true;
        }
    } else if (watched == mForm.pctTemplate) {
        if (event->type() == QEvent::MouseButtonPress) {
            auto *mouse = static_cast<QMouseEvent *>(event);
            canvasPressed(mForm.pctTemplate->toCanvas(mouse->position().toPoint()));
        } else if (event->type() == QEvent::KeyPress) {
            if (canvasKey(static_cast<QKeyEvent *>(event)))
                return true;
        }
    } else if (watched == mForm.canvasArea->viewport() && event->type() == QEvent::Wheel) {
        auto *wheel = static_cast<QWheelEvent *>(event);
        if (wheel->modifiers().testFlag(Qt::ControlModifier)) {
            if (wheel->angleDelta().y() > 0)
                zoomIn();
            else if (wheel->angleDelta().y() < 0)
                zoomOut();
            return true;
        }
    } else if (watched == mForm.mshObject && event->type() == QEvent::Move) {
        if (mForm.mshObject->isMoving())
            frameMoving();
    }
    return QObject::eventFilter(watched, event);
}

// ---- tree ------------------------------------------------------------------------------

char SkinEditing::ownLetter(const ObjectTreeModel &tree, const QModelIndex &node)
{
    if (!node.isValid())
        return 0;
    const ObjectTreeNode::Kind kind = tree.nodeKind(node);
    if (kind == ObjectTreeNode::Property)
        return 'P';
    // Header variables carry no letter of their own.
    if (kind != ObjectTreeNode::Element || tree.nodeKind(node.parent()) == ObjectTreeNode::Headers)
        return 0;
    const QByteArray key = tree.nodeKey(node);
    const qsizetype bar = key.lastIndexOf(NodeKey::Separator);
    return key.at(bar + 1);
}

QByteArray SkinEditing::selectedKey() const
{
    return mTree.nodeKey(mForm.tvwObjects->currentIndex());
}

char SkinEditing::selectedLetter() const
{
    return ownLetter(mTree, mForm.tvwObjects->currentIndex());
}

QMenu *SkinEditing::menuFor(const QModelIndex &node) const
{
    switch (ownLetter(mTree, node)) {
    case 'P':
        return mForm.mnuProperty;
    case 'L': {
        const NodeTarget target = mTree.resolve(node);
        const QByteArray type = target.element ? target.element->ElementType() : QByteArray();
        return type == "LAYER" || type == "ELEMENT_TEMPLATE" ? mForm.mnuLayer : nullptr;
    }
    case 'E':
    case 'T':
        return mForm.mnuElement;
    default:
        return nullptr;
    }
}

void SkinEditing::nodeRightReleased(const QModelIndex &node, QPoint globalPoint)
{
    if (!node.isValid())
        return;
    mForm.selectNode(node);
    if (QMenu *menu = menuFor(node)) {
        // The chosen entry runs through its own triggered signal.
        popUpMenu(*menu, globalPoint);
    }
}

void SkinEditing::nodeDoubleClicked(const QModelIndex &node)
{
    if (ownLetter(mTree, node) != 'P')
        return;
    const NodeTarget target = mTree.resolve(node);
    // A flag has no value to edit.
    if (target.property.isNull() || target.property.value() == clsProperty::noValue())
        return;
    const QString answer = mEnv.dialogs.askText(QStringLiteral("Edit Value"), QStringLiteral("Enter new Value"),
                                                QString::fromLatin1(target.property.value()));
    if (answer.isEmpty())
        return;
    const QByteArray key = mTree.nodeKey(node);
    if (latin1(answer) == target.property.value()) {
        mForm.NodeClick(node);
        return;
    }
    mStack->push(new SetPropertyValueCommand(mSkin, key, latin1(answer), key));
}

// ---- menu commands ---------------------------------------------------------------------

void SkinEditing::AddElement(const QString &type)
{
    if (selectedLetter() != 'L')
        return;
    const QString name = mEnv.dialogs.askText(QStringLiteral("Add Element"), QStringLiteral("Type New Object Name"));
    if (name.isEmpty())
        return;
    mStack->push(new AddElementCommand(mSkin, selectedKey(), latin1(name), latin1(type)));
}

void SkinEditing::AddLayer()
{
    const QString name = mEnv.dialogs.askText(QStringLiteral("Add Layer"), QStringLiteral("Type New Layer Name"));
    if (name.isEmpty())
        return;
    mStack->push(new AddElementCommand(mSkin, QByteArray(), latin1(name), QByteArrayLiteral("LAYER")));
}

void SkinEditing::AddProperty()
{
    const char letter = selectedLetter();
    if (letter != 'E' && letter != 'T')
        return;
    const QByteArray name = AsciiCase::lowered(latin1(
        mEnv.dialogs.askText(QStringLiteral("Add Property"), QStringLiteral("Type New Property Name"))));
    if (name.isEmpty())
        return;
    mStack->push(new AddPropertyCommand(mSkin, selectedKey(), name, PropertyDefaults::valueFor(name)));
}

// One removal for the three menus; no confirmation is asked, since undo brings
// the removed entry back.
void SkinEditing::RemoveSelected()
{
    const QByteArray key = selectedKey();
    switch (selectedLetter()) {
    case 'P': {
        auto command = std::make_unique<RemovePropertyCommand>(mSkin, key);
        if (command->isValid())
            mStack->push(command.release());
        break;
    }
    case 'L':
    case 'E': {
        auto command = std::make_unique<RemoveElementCommand>(mSkin, key);
        if (command->isValid())
            mStack->push(command.release());
        break;
    }
    default:
        break;
    }
}

// ---- property grid -------------------------------------------------------------------------

void SkinEditing::gridItemChanged(PowGridItem *item, int column)
{
    if (!item)
        return;
    if (column == PropertyGridFiller::ColValue)
        valueCommitted(item);
    else if (column == PropertyGridFiller::ColButton) {
        const QString name = item->CellText(PropertyGridFiller::ColProperty);
        if (name == QLatin1String("color"))
            chooseColour(item);
        else if (name == QLatin1String("bg") || name == QLatin1String("bmp") || name == QLatin1String("iconspr"))
            chooseImage(item);
    }
}

void SkinEditing::valueCommitted(PowGridItem *item)
{
    const QByteArray key = latin1(item->CellText(PropertyGridFiller::ColNodeKey));
    const QModelIndex node = mTree.indexOfKey(key);
    if (!node.isValid())
        return;
    const NodeTarget target = mTree.resolve(node);
    if (target.property.isNull())
        return;
    const QByteArray value = latin1(item->CellText(PropertyGridFiller::ColValue));
    const QByteArray old = target.property.value();
    // A flag shows an empty value; leaving it empty keeps the flag.
    if (value == old || (old == clsProperty::noValue() && value.isEmpty()))
        return;
    // The grid shows the property's owner; that is what the node-click handling
    // of the property node shows again.
    const QByteArray shown = mForm.currentNodeKey().isEmpty() ? key : mForm.currentNodeKey();
    mStack->push(new SetPropertyValueCommand(mSkin, key, value, shown));
}

void SkinEditing::chooseColour(PowGridItem *item)
{
    const QByteArray value = latin1(item->CellText(PropertyGridFiller::ColValue));
    const std::optional<QColor> chosen = mEnv.dialogs.color(ColorValueText::presetFor(value));
    if (!chosen)
        return;
    item->setCellText(PropertyGridFiller::ColValue, QString::fromLatin1(ColorValueText::valueFor(*chosen)));
    valueCommitted(item);
}

void SkinEditing::chooseImage(PowGridItem *item)
{
    const QByteArray value = clsProperty::stringValueOf(latin1(item->CellText(PropertyGridFiller::ColValue)));
    QString start = mLookup->GetImageFile(value).path;
    if (start.isEmpty())
        start = mLookup->LocateSkinFile(QString::fromLatin1(value), false);
    const QString chosen = mEnv.dialogs.openFileName(QStringLiteral("Select Image"), start, kImageFilter);
    if (chosen.isEmpty())
        return;
    item->setCellText(PropertyGridFiller::ColValue, QFileInfo(chosen).fileName());
    valueCommitted(item);
}

// ---- canvas --------------------------------------------------------------------------------

void SkinEditing::canvasPressed(QPoint canvasPoint)
{
    const clsElement *layer = mForm.shownLayer();
    if (!layer)
        return;
    const clsElement *hit = CanvasHitTest::hit(mEnv.document, layer, mForm.renderer(), canvasPoint);
    if (!hit)
        return;
    const QModelIndex node = mTree.indexOfKey(mForm.renderer().nodeKeyOf(hit));
    if (node.isValid())
        mForm.selectNode(node);
}

bool SkinEditing::canMoveWithKeys() const
{
    return mForm.currentObject() && mForm.mshObject->isVisible()
        && !mForm.button(QStringLiteral("Lock"))->isChecked();
}

bool SkinEditing::canvasKey(QKeyEvent *event)
{
    int dx = 0;
    int dy = 0;
    switch (event->key()) {
    case Qt::Key_Left: dx = -1; break;
    case Qt::Key_Right: dx = 1; break;
    case Qt::Key_Up: dy = -1; break;
    case Qt::Key_Down: dy = 1; break;
    default: return false;
    }
    if (!canMoveWithKeys())
        return false;
    const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? 10 : 1;
    moveCurrentBy(dx * step, dy * step);
    return true;
}

// The object's place is read as it is drawn, through its templates, so that an
// object placed by its template gets its own "x" and "y" where it was dropped.
void SkinEditing::moveCurrentBy(int dx, int dy)
{
    const clsElement *object = mForm.currentObject();
    if (!object)
        return;
    const std::optional<DragPosition> moved = DragPosition::moved(
        mEnv.document.GetElementValue("x", object), mEnv.document.GetElementValue("y", object), dx, dy);
    if (!moved)
        return;
    mStack->push(new MoveElementCommand(mSkin, mForm.currentNodeKey(), moved->x, moved->y, clock()));
}

void SkinEditing::frameReleased(int dx, int dy, int &left, int &top, int &width, int &height)
{
    mDragged = nullptr;
    mDragBackground = QImage();
    // Only the distance counts; the frame's size handles change nothing.
    const QPoint distance = canvasDistance(QPoint(dx, dy));
    if (mForm.currentObject())
        moveCurrentBy(distance.x(), distance.y());
    // The frame stays where the redraw put it.
    const QRect frame = mForm.mshObject->geometry();
    left = frame.x();
    top = frame.y();
    width = frame.width();
    height = frame.height();
}

QPoint SkinEditing::canvasDistance(QPoint widgetDistance) const
{
    return mForm.pctTemplate->toCanvasDistance(widgetDistance);
}

// ---- live drag ---------------------------------------------------------------------------------

void SkinEditing::dragStarted()
{
    mDragStart = mForm.mshObject->pos();
    mDragged = mForm.currentObject();
    mDragBackground = QImage();
}

void SkinEditing::frameMoving()
{
    const clsElement *layer = mForm.shownLayer();
    if (!mDragged || !layer || mForm.pctTemplate->picture().isNull())
        return;
    if (mDragBackground.isNull())
        mDragBackground = LiveDrag::pictureWithout(mForm.renderer(), layer, mDragged,
                                                   mForm.pctTemplate->picture().size());
    const QPoint distance = canvasDistance(mForm.mshObject->pos() - mDragStart);
    mForm.pctTemplate->setPicture(
        LiveDrag::pictureWith(mForm.renderer(), mDragBackground, mDragged, distance));
}

// ---- unsaved changes ------------------------------------------------------------------------------

void SkinEditing::updateModifiedPanel()
{
    mModified->setText(mStack->isClean() ? QString() : QStringLiteral("Modified"));
}

bool SkinEditing::mayDiscardChanges()
{
    if (mStack->isClean())
        return true;
    const Dialogs::Button answer = mEnv.dialogs.message(
        QStringLiteral("Korvi8 Template Editor"),
        QStringLiteral("The skin has unsaved changes. Do you want to save them?"), Dialogs::Icon::Question,
        Dialogs::Buttons::YesNoCancel);
    if (answer == Dialogs::Button::No)
        return true;
    if (answer != Dialogs::Button::Yes)
        return false;
    mForm.SaveCommand();
    return mStack->isClean();
}

void SkinEditing::markSaved()
{
    mStack->setClean();
}

void SkinEditing::forgetHistory()
{
    mDragged = nullptr;
    mDragBackground = QImage();
    mStack->clear();
}
