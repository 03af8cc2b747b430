// SPDX-License-Identifier: MIT
#include "DocumentActions.h"

#include "ApplicationInfo.h"
#include "Dialogs.h"
#include "FreeName.h"
#include "ElementCommands.h"
#include "ChangeValueCommand.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PropertyCommands.h"
#include "SkinCodec.h"
#include "PropertyKinds.h"
#include "SkinDocument.h"
#include "TypedText.h"
#include "clsElement.h"
#include "clsKorviInterface.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QStyle>
#include <QTreeView>
#include <QUndoStack>

#include <memory>

namespace {

// The element types offered by "Add Object".
const char *const kElementTypes[] = { "TEXT", "SPRITE", "BUTTON", "CHECKBOX", "SLIDER",
                                      "HSCROLLBAR", "LIST", "PUSHBUTTON" };

QAction *entryNamed(QMenu *menu, const QString &name)
{
    for (QAction *action : menu->actions()) {
        if (action->objectName() == name)
            return action;
    }
    return nullptr;
}

// Pushes a command that knows whether its key named something.
template<class Command>
bool pushIfValid(QUndoStack &stack, std::unique_ptr<Command> command)
{
    if (!command->isValid())
        return false;
    stack.push(command.release());
    return true;
}

} // namespace

DocumentActions::Menus DocumentActions::createMenus(QWidget &owner)
{
    const auto menu = [&owner](const QString &title, const char *name) {
        auto *created = new QMenu(title, &owner);
        created->setObjectName(QString::fromLatin1(name));
        return created;
    };
    const auto entry = [](QMenu *in, const QString &text, const char *name) {
        in->addAction(text)->setObjectName(QString::fromLatin1(name));
    };
    Menus menus;
    menus.property = menu(QStringLiteral("Property"), "mnuProperty");
    entry(menus.property, QStringLiteral("Remove Property"), "mnuRemoveProperty");
    menus.layer = menu(QStringLiteral("Layer"), "mnuLayer");
    QMenu *addObject = menus.layer->addMenu(QStringLiteral("Add Object"));
    addObject->setObjectName(QStringLiteral("mnuAddObject"));
    // The type is the entry's data: desktops may put accelerators in its text.
    for (const QString &type : elementTypes()) {
        QAction *add = addObject->addAction(type);
        add->setData(type);
        menus.addElement << add;
    }
    entry(menus.layer, QStringLiteral("Add New Layer"), "mnuAddLayer");
    entry(menus.layer, QStringLiteral("Remove Layer"), "mnuRemoveLayer");
    menus.element = menu(QStringLiteral("Element"), "mnuElement");
    entry(menus.element, QStringLiteral("Add Property"), "mnuAddProperty");
    entry(menus.element, QStringLiteral("Remove Object"), "mnuRemoveObject");
    return menus;
}

DocumentActions::DocumentActions(SkinDocument &document, ObjectTreeModel &tree, QTreeView &view,
                                 const Menus &menus, Dialogs &dialogs, QObject *parent)
    : QObject(parent)
    , mDocument(document)
    , mTree(tree)
    , mView(view)
    , mMenus(menus)
    , mDialogs(dialogs)
{
    setObjectName(QStringLiteral("DocumentActions"));
    popUpMenu = [](QMenu &menu, QPoint globalPoint) { return menu.exec(globalPoint); };
    createUndoActions();
    connectMenus();
    // The pop-up menu comes on the release of the right button.
    view.setContextMenuPolicy(Qt::PreventContextMenu);
    view.viewport()->installEventFilter(this);
    connect(&view, &QTreeView::doubleClicked, this, &DocumentActions::nodeDoubleClicked);
}

void DocumentActions::createUndoActions()
{
    QUndoStack *stack = &mDocument.undoStack();
    QStyle *style = QApplication::style();
    mUndo = new QAction(style->standardIcon(QStyle::SP_ArrowBack), QStringLiteral("Undo"), this);
    mUndo->setObjectName(QStringLiteral("Undo"));
    mUndo->setShortcut(QKeySequence::Undo);
    mUndo->setEnabled(false);
    mRedo = new QAction(style->standardIcon(QStyle::SP_ArrowForward), QStringLiteral("Redo"), this);
    mRedo->setObjectName(QStringLiteral("Redo"));
    // Ctrl+Y redoes everywhere, beside the platform's own keys (Ctrl+Shift+Z).
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    for (const QKeySequence &keys : { QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z) }) {
        if (!redoKeys.contains(keys))
            redoKeys << keys;
    }
    mRedo->setShortcuts(redoKeys);
    mRedo->setEnabled(false);
    connect(mUndo, &QAction::triggered, stack, &QUndoStack::undo);
    connect(mRedo, &QAction::triggered, stack, &QUndoStack::redo);
    connect(stack, &QUndoStack::canUndoChanged, mUndo, &QAction::setEnabled);
    connect(stack, &QUndoStack::canRedoChanged, mRedo, &QAction::setEnabled);
    connect(stack, &QUndoStack::undoTextChanged, this,
            [this](const QString &text) { mUndo->setToolTip(QStringLiteral("Undo ") + text); });
    connect(stack, &QUndoStack::redoTextChanged, this,
            [this](const QString &text) { mRedo->setToolTip(QStringLiteral("Redo ") + text); });

    mModified = new QLabel;
    mModified->setObjectName(QStringLiteral("stbModified"));
    mModified->setMinimumWidth(110);
    connect(stack, &QUndoStack::cleanChanged, this, &DocumentActions::updateModifiedPanel);
    updateModifiedPanel();
}

void DocumentActions::connectMenus()
{
    for (QAction *entry : mMenus.addElement)
        connect(entry, &QAction::triggered, this, [this, entry] { AddElement(entry->data().toString()); });
    connect(entryNamed(mMenus.layer, QStringLiteral("mnuAddLayer")), &QAction::triggered, this,
            &DocumentActions::AddLayer);
    connect(entryNamed(mMenus.layer, QStringLiteral("mnuRemoveLayer")), &QAction::triggered, this,
            &DocumentActions::RemoveSelected);
    connect(entryNamed(mMenus.element, QStringLiteral("mnuAddProperty")), &QAction::triggered, this,
            &DocumentActions::AddProperty);
    connect(entryNamed(mMenus.element, QStringLiteral("mnuRemoveObject")), &QAction::triggered, this,
            &DocumentActions::RemoveSelected);
    connect(entryNamed(mMenus.property, QStringLiteral("mnuRemoveProperty")), &QAction::triggered, this,
            &DocumentActions::RemoveSelected);
}

bool DocumentActions::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == mView.viewport() && event->type() == QEvent::MouseButtonRelease) {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::RightButton) {
            const QPoint point = mouse->position().toPoint();
            nodeRightReleased(mView.indexAt(point), mView.viewport()->mapToGlobal(point));
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

// ---- tree ------------------------------------------------------------------------------

QModelIndex DocumentActions::currentNode() const
{
    return mTree.indexOfKey(mDocument.currentKey());
}

QMenu *DocumentActions::menuFor(const QModelIndex &node) const
{
    switch (mTree.nodeLetter(node)) {
    case 'P':
        return mMenus.property;
    case 'L': {
        const clsElement *element = mTree.resolve(node).element;
        const bool offersMenu = element && (element->IsLayer() || element->IsElementTemplate());
        return offersMenu ? mMenus.layer : nullptr;
    }
    case 'E':
    case 'T':
        return mMenus.element;
    default:
        return nullptr;
    }
}

void DocumentActions::nodeRightReleased(const QModelIndex &node, QPoint globalPoint)
{
    if (!node.isValid())
        return;
    for (QModelIndex up = node.parent(); up.isValid(); up = up.parent())
        mView.expand(up);
    mView.setCurrentIndex(node);
    if (QMenu *menu = menuFor(node)) {
        // The chosen entry runs through its own triggered signal.
        popUpMenu(*menu, globalPoint);
    }
}

void DocumentActions::nodeDoubleClicked(const QModelIndex &node)
{
    if (mTree.nodeLetter(node) != 'P')
        return;
    const NodeTarget target = mTree.resolve(node);
    // A flag has no value to edit.
    if (target.property.isNull() || target.property.value() == clsProperty::noValue())
        return;
    const SkinCodec &codec = mDocument.document().codec();
    const QString shown = codec.toText(target.property.value());
    const QString answer = mDialogs.askText(QStringLiteral("Edit Value"), QStringLiteral("Enter new Value"), shown);
    if (answer.isEmpty() || answer == shown)
        return;
    const std::optional<QByteArray> value = TypedText::value(mDialogs, answer, codec);
    if (!value || *value == target.property.value())
        return;
    const QByteArray key = mTree.nodeKey(node);
    mDocument.undoStack().push(new SetPropertyValueCommand(mDocument, key, *value, key));
}

// ---- menu commands ---------------------------------------------------------------------

QStringList DocumentActions::elementTypes()
{
    QStringList types;
    for (const char *type : kElementTypes)
        types << QString::fromLatin1(type);
    return types;
}

// The layer menu offers Add Object on layers and element templates only; an
// object of one (or its property) puts the new object right after it, which
// is where the user is looking.
DocumentActions::ObjectPlace DocumentActions::newObjectPlace() const
{
    QModelIndex node = currentNode();
    if (mTree.nodeLetter(node) == 'P')
        node = node.parent();
    const char letter = mTree.nodeLetter(node);
    const QModelIndex block = letter == 'E' ? node.parent() : node;
    const clsElement *layer = mTree.nodeLetter(block) == 'L' ? mTree.resolve(block).element : nullptr;
    if (!layer || !(layer->IsLayer() || layer->IsElementTemplate()))
        return {};
    ObjectPlace place{ mTree.nodeKey(block), -1 };
    if (letter == 'E') {
        const int after = layer->subElementCount() > 0
            ? layer->SubElements().positionOf(mDocument.elementAt(mTree.nodeKey(node)))
            : -1;
        if (after < 0)
            return {};
        place.index = after + 1;
    }
    return place;
}

bool DocumentActions::canAddElement() const
{
    return !newObjectPlace().parentKey.isEmpty();
}

void DocumentActions::AddElement(const QString &type)
{
    const ObjectPlace place = newObjectPlace();
    if (place.parentKey.isEmpty())
        return;
    const QString name = mDialogs.askText(QStringLiteral("Add Element"), QStringLiteral("Type New Object Name"),
                                          SkinCodec::wordText(FreeName::forType(
                                              SkinCodec::wordBytes(type), mDocument.childrenOf(place.parentKey))));
    if (name.isEmpty())
        return;
    const std::optional<QByteArray> word = TypedText::name(mDialogs, name);
    if (!word)
        return;
    mDocument.undoStack().push(
        new AddElementCommand(mDocument, place.parentKey, *word, SkinCodec::wordBytes(type), place.index));
}

void DocumentActions::AddLayer()
{
    const QString name = mDialogs.askText(QStringLiteral("Add Layer"), QStringLiteral("Type New Layer Name"));
    if (name.isEmpty())
        return;
    const std::optional<QByteArray> word = TypedText::name(mDialogs, name);
    if (!word)
        return;
    mDocument.undoStack().push(new AddElementCommand(mDocument, QByteArray(), *word, QByteArrayLiteral("LAYER")));
}

// The names the drawing reads, each with the value it starts with.
QStringList DocumentActions::propertySuggestions() const
{
    QStringList suggestions;
    for (const QByteArray &name : PropertyKinds::knownNames()) {
        const QByteArray value = PropertyKinds::defaultValueOf(name);
        suggestions << (value.isEmpty() || value == clsProperty::noValue()
                            ? QString::fromLatin1(name)
                            : QStringLiteral("%1   (%2)").arg(QString::fromLatin1(name), QString::fromLatin1(value)));
    }
    return suggestions;
}

void DocumentActions::AddProperty()
{
    const char letter = mTree.nodeLetter(currentNode());
    if (letter != 'E' && letter != 'T')
        return;
    const QStringList suggestions = propertySuggestions();
    const QString typed = mDialogs.askTextFrom(QStringLiteral("Add Property"), QStringLiteral("Type New Property Name"),
                                               suggestions);
    // A suggestion chosen as it stands shows its starting value after the name.
    const QString key = suggestions.contains(typed) ? typed.section(QLatin1Char(' '), 0, 0) : typed;
    if (key.isEmpty())
        return;
    const std::optional<QByteArray> name = TypedText::key(mDialogs, key);
    if (!name)
        return;
    mDocument.undoStack().push(new AddPropertyCommand(mDocument, mTree.nodeKey(currentNode()), *name,
                                                      PropertyKinds::defaultValueOf(*name)));
}

// One removal for the three menus; no confirmation is asked, since undo brings
// the removed entry back.
void DocumentActions::RemoveSelected()
{
    const QByteArray key = mTree.nodeKey(currentNode());
    switch (mTree.nodeLetter(currentNode())) {
    case 'P':
        pushIfValid(mDocument.undoStack(), std::make_unique<RemovePropertyCommand>(mDocument, key));
        break;
    case 'L':
    case 'E': {
        const clsElement *element = mDocument.elementAt(key);
        const int children = element ? element->subElementCount() : 0;
        const QString what = element ? QStringLiteral("%1 %2")
                                           .arg(element->ElementType() == "LAYER" ? QStringLiteral("layer")
                                                                                  : QStringLiteral("object"),
                                                SkinCodec::wordText(element->strName()))
                                     : QString();
        if (!pushIfValid(mDocument.undoStack(), std::make_unique<RemoveElementCommand>(mDocument, key)))
            break;
        if (children > 0)
            emit removed(QStringLiteral("Removed %1 and its %2 %3 (Undo brings them back)")
                             .arg(what)
                             .arg(children)
                             .arg(children == 1 ? QStringLiteral("object") : QStringLiteral("objects")));
        break;
    }
    default:
        break;
    }
}

// ---- unsaved changes ------------------------------------------------------------------------------

void DocumentActions::updateModifiedPanel()
{
    mModified->setText(mDocument.undoStack().isClean() ? QString() : QStringLiteral("Modified"));
}

bool DocumentActions::mayDiscardChanges()
{
    if (mDocument.undoStack().isClean())
        return true;
    const Dialogs::Button answer = mDialogs.message(
        ApplicationInfo::windowTitle(),
        QStringLiteral("The skin has unsaved changes. Do you want to save them?"), Dialogs::Icon::Question,
        Dialogs::Buttons::YesNoCancel);
    if (answer == Dialogs::Button::No)
        return true;
    if (answer != Dialogs::Button::Yes)
        return false;
    emit saveWanted();
    return mDocument.undoStack().isClean();
}

void DocumentActions::markSaved()
{
    mDocument.undoStack().setClean();
}
