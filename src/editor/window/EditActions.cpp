// SPDX-License-Identifier: MIT
#include "EditActions.h"

#include "Dialogs.h"
#include "DocumentActions.h"
#include "ElementClipboard.h"
#include "ElementCommands.h"
#include "FreeName.h"
#include "NameWord.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "PasteElementsCommand.h"
#include "PropertyCommands.h"
#include "PropertyGridController.h"
#include "RenameElementCommand.h"
#include "SkinDocument.h"
#include "clsKorviInterface.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QUndoStack>

namespace {

// How far a copy moves off the element it would hide.
constexpr int kCopyOffset = 10;

// A plain whole number of a property, as a copy's place is read.
bool plainNumber(const clsElement &element, const char *key, int &number)
{
    const clsProperty property = element.Properties().Find(key);
    if (!property)
        return false;
    bool ok = false;
    number = property.value().toInt(&ok);
    return ok;
}

bool coversExactly(const clsElement &copy, const clsElement &other)
{
    int x = 0, y = 0, ox = 0, oy = 0;
    return other.ElementType() == copy.ElementType() && plainNumber(copy, "x", x) && plainNumber(copy, "y", y)
        && plainNumber(other, "x", ox) && plainNumber(other, "y", oy) && x == ox && y == oy;
}

// A copy put where its original stands would hide it, and the two could not
// be told apart on the canvas: it moves right and down until it covers no
// element of its kind exactly. Places that are not plain numbers stay as they are.
void moveOffWhatItCovers(clsElement &copy, const clsElements *siblings, const std::vector<const clsElement *> &placed)
{
    const auto coversAny = [&] {
        if (siblings) {
            for (const clsElement *sibling : *siblings) {
                if (coversExactly(copy, *sibling))
                    return true;
            }
        }
        for (const clsElement *other : placed) {
            if (coversExactly(copy, *other))
                return true;
        }
        return false;
    };
    int x = 0, y = 0;
    for (int tries = 0; tries < 1000 && coversAny(); ++tries) {
        plainNumber(copy, "x", x);
        plainNumber(copy, "y", y);
        copy.Properties().setValue("x", QByteArray::number(x + kCopyOffset));
        copy.Properties().setValue("y", QByteArray::number(y + kCopyOffset));
    }
}

// A new name no sibling holds, and a place where it hides nothing.
void makeDistinct(clsElement &copy, const clsElements *siblings, QList<QByteArray> &names,
                  std::vector<const clsElement *> &placed)
{
    copy.setStrName(FreeName::of(copy.strName(), siblings, names));
    names << copy.strName();
    moveOffWhatItCovers(copy, siblings, placed);
    placed.push_back(&copy);
}

} // namespace

EditActions::EditActions(SkinDocument &document, ObjectTreeModel &tree, DocumentActions &actions,
                         Dialogs &dialogs, QObject *parent)
    : QObject(parent)
    , mDocument(document)
    , mTree(tree)
    , mActions(actions)
    , mDialogs(dialogs)
{
    setObjectName(QStringLiteral("EditActions"));
    mCopy = makeAction(QStringLiteral("mnuCopy"), QStringLiteral("&Copy"), QKeySequence::Copy,
                       &EditActions::copySelected);
    mPaste = makeAction(QStringLiteral("mnuPaste"), QStringLiteral("&Paste"), QKeySequence::Paste,
                        &EditActions::paste);
    mDuplicate = makeAction(QStringLiteral("mnuDuplicate"), QStringLiteral("D&uplicate"),
                            QKeySequence(Qt::CTRL | Qt::Key_D), &EditActions::duplicateSelected);
    mDelete = makeAction(QStringLiteral("mnuDelete"), QStringLiteral("&Delete"), QKeySequence::Delete,
                         &EditActions::deleteSelected);
    mRename = makeAction(QStringLiteral("mnuRename"), QStringLiteral("&Rename..."), QKeySequence(Qt::Key_F2),
                         &EditActions::renameSelected);
    // Plain and Shift arrows nudge the picked object on the canvas; with Ctrl
    // they move it in the order instead.
    mMoveUp = makeAction(QStringLiteral("mnuMoveUp"), QStringLiteral("Move &Up"),
                         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up), &EditActions::moveSelectedUp);
    mMoveDown = makeAction(QStringLiteral("mnuMoveDown"), QStringLiteral("Move Do&wn"),
                           QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down), &EditActions::moveSelectedDown);
    connect(&document, &SkinDocument::currentChanged, this, &EditActions::updateActions);
    connect(&document, &SkinDocument::changed, this, &EditActions::updateActions);
    connect(&document, &SkinDocument::reset, this, &EditActions::updateActions);
    updateActions();
}

QAction *EditActions::makeAction(const QString &name, const QString &text, const QKeySequence &keys,
                                 void (EditActions::*slot)())
{
    auto *action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

QMenu *EditActions::addMenuTo(QMenuBar &bar, const QList<QAction *> &more)
{
    QMenu *edit = bar.addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));
    edit->addAction(mActions.undoAction());
    edit->addAction(mActions.redoAction());
    edit->addSeparator();
    edit->addActions({ mCopy, mPaste, mDuplicate, mDelete, mRename });
    edit->addSeparator();
    edit->addActions({ mMoveUp, mMoveDown });
    mAddObject = edit->addMenu(QStringLiteral("Add &Object"));
    mAddObject->setObjectName(QStringLiteral("mnuEditAddObject"));
    for (const QString &type : DocumentActions::elementTypes()) {
        QAction *add = mAddObject->addAction(type);
        add->setData(type);
        connect(add, &QAction::triggered, this, [this, type] { mActions.AddElement(type); });
    }
    if (!more.isEmpty()) {
        edit->addSeparator();
        edit->addActions(more);
    }
    updateActions();
    return edit;
}

char EditActions::currentLetter() const
{
    return mTree.nodeLetter(mTree.indexOfKey(mDocument.currentKey()));
}

// Objects, layers and states live in a collection the document can take
// them out of; a used layer's key names the layer it uses instead.
QByteArray EditActions::currentElementKey() const
{
    const char letter = currentLetter();
    return letter == 'E' || letter == 'L' || letter == 'S' ? mDocument.currentKey() : QByteArray();
}

void EditActions::updateActions()
{
    const bool element = !currentElementKey().isEmpty();
    mCopy->setEnabled(element);
    mDuplicate->setEnabled(element);
    mRename->setEnabled(element);
    // The Remove menus take away objects, layers and properties.
    const char letter = currentLetter();
    mDelete->setEnabled(letter == 'E' || letter == 'L' || letter == 'P');
    const QByteArray key = currentElementKey();
    mMoveUp->setEnabled(ReorderElementCommand::canMove(mDocument, key, ReorderElementCommand::Direction::Up));
    mMoveDown->setEnabled(ReorderElementCommand::canMove(mDocument, key, ReorderElementCommand::Direction::Down));
    if (mAddObject)
        mAddObject->setEnabled(mActions.canAddElement());
}

void EditActions::moveSelectedUp()
{
    moveSelected(ReorderElementCommand::Direction::Up);
}

void EditActions::moveSelectedDown()
{
    moveSelected(ReorderElementCommand::Direction::Down);
}

void EditActions::moveSelected(ReorderElementCommand::Direction direction)
{
    auto command = std::make_unique<ReorderElementCommand>(mDocument, currentElementKey(), direction);
    if (command->isValid())
        mDocument.undoStack().push(command.release());
}

// ---- delete and rename ----------------------------------------------------------------

// The same removal as the tree's Remove menus, without a question: undo
// brings the entry back.
void EditActions::deleteSelected()
{
    if (mGrid && mGrid->hasFocus()) {
        const QByteArray key = mGrid->selectedPropertyKey();
        if (key.isEmpty())
            return;
        auto command = std::make_unique<RemovePropertyCommand>(mDocument, key);
        if (command->isValid())
            mDocument.undoStack().push(command.release());
        return;
    }
    mActions.RemoveSelected();
}

void EditActions::renameSelected()
{
    const QByteArray key = currentElementKey();
    const clsElement *element = mDocument.elementAt(key);
    if (!element)
        return;
    const QString title = QStringLiteral("Rename");
    // A refused name brings the prompt back with what was typed, to be
    // corrected rather than typed again; Cancel ends it.
    QString name = SkinCodec::wordText(element->strName());
    for (;;) {
        name = mDialogs.askText(title, QStringLiteral("Type New Name"), name);
        if (name.isEmpty() || name == SkinCodec::wordText(element->strName()))
            return;
        const QString problem = NameWord::problemWithName(name);
        if (problem.isEmpty())
            break;
        mDialogs.message(title, problem, Dialogs::Icon::Warning);
    }
    auto command = std::make_unique<RenameElementCommand>(mDocument, key, SkinCodec::wordBytes(name));
    if (command->isValid())
        mDocument.undoStack().push(command.release());
}

// ---- clipboard -----------------------------------------------------------------------------

void EditActions::copySelected()
{
    const QByteArray key = currentElementKey();
    const clsElement *element = mDocument.elementAt(key);
    if (!element)
        return;
    const bool isBlock = NodeKey(key).parent().isEmpty();
    QGuiApplication::clipboard()->setMimeData(ElementClipboard::dataFor(*element, isBlock, mDocument.document().codec()).release());
}

void EditActions::duplicateSelected()
{
    const QByteArray key = currentElementKey();
    const clsElement *element = mDocument.elementAt(key);
    if (!element)
        return;
    const QByteArray parent = NodeKey(key).parent();
    const clsElements *siblings = mDocument.childrenOf(parent);
    std::unique_ptr<clsElement> copy = ElementClipboard::copyOf(*element);
    QList<QByteArray> names;
    std::vector<const clsElement *> placed;
    makeDistinct(*copy, siblings, names, placed);
    std::vector<PasteElementsCommand::Entry> entries;
    entries.push_back({ parent, siblings->positionOf(element) + 1, std::move(copy) });
    mDocument.undoStack().push(new PasteElementsCommand(
        mDocument, std::move(entries), QStringLiteral("Duplicate %1").arg(SkinCodec::wordText(element->strName()))));
}

// Objects go into the selected layer or block, or after the selected object in
// its own; layers and blocks go after the block that holds the selection, or
// at the end when nothing is selected.
void EditActions::paste()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    ElementClipboard::Pasted pasted = data ? ElementClipboard::elementsIn(*data, mDocument.document().codec()) : ElementClipboard::Pasted();
    const QString title = QStringLiteral("Paste");
    if (!pasted.problem.isEmpty() || (pasted.blocks.empty() && pasted.objects.empty())) {
        mDialogs.message(title, pasted.problem.isEmpty() ? QStringLiteral("The clipboard holds no layers or objects.")
                                                         : pasted.problem,
                         Dialogs::Icon::Warning);
        return;
    }
    QByteArray anchor = mDocument.currentKey();
    const char letter = currentLetter();
    if (letter == 'P' || letter == 'U')
        anchor = NodeKey(anchor).parent();
    const clsElement *anchorElement = mDocument.elementAt(anchor);
    const clsElements &layers = mDocument.document().Layers();
    const QByteArray top = anchor.isEmpty() ? QByteArray() : NodeKey(anchor).segments().first();
    const int topIndex = layers.positionOf(mDocument.elementAt(top));

    QByteArray objectsParent;
    int objectsIndex = -1;
    if (anchorElement && NodeKey(anchor).parent().isEmpty() && anchorElement->IsBlock() && topIndex >= 0) {
        objectsParent = anchor;
        objectsIndex = anchorElement->subElementCount();
    } else if (anchorElement && !NodeKey(anchor).parent().isEmpty()) {
        objectsParent = NodeKey(anchor).parent();
        const clsElements *siblings = mDocument.childrenOf(objectsParent);
        objectsIndex = siblings ? siblings->positionOf(anchorElement) + 1 : -1;
    }
    if (!pasted.objects.empty() && objectsIndex < 0) {
        mDialogs.message(title, QStringLiteral("Select a layer or an object to paste objects into."),
                         Dialogs::Icon::Warning);
        return;
    }
    // Each pasted element gets a name not taken where it goes, and a place
    // where it hides no element it was copied from.
    std::vector<PasteElementsCommand::Entry> entries;
    QList<QByteArray> objectNames;
    std::vector<const clsElement *> objectsPlaced;
    const clsElements *objectSiblings = objectsIndex >= 0 ? mDocument.childrenOf(objectsParent) : nullptr;
    for (auto &object : pasted.objects) {
        makeDistinct(*object, objectSiblings, objectNames, objectsPlaced);
        entries.push_back({ objectsParent, objectsIndex++, std::move(object) });
    }
    int blocksIndex = topIndex >= 0 ? topIndex + 1 : layers.Count();
    QList<QByteArray> blockNames;
    for (auto &block : pasted.blocks) {
        block->setStrName(FreeName::of(block->strName(), &layers, blockNames));
        blockNames << block->strName();
        entries.push_back({ QByteArray(), blocksIndex++, std::move(block) });
    }
    mDocument.undoStack().push(new PasteElementsCommand(mDocument, std::move(entries), QStringLiteral("Paste")));
    if (pasted.leftOut > 0)
        mDialogs.message(title,
                         QStringLiteral("%1 templates, font types or header variables were not pasted: "
                                        "they have no place in a layer.")
                             .arg(pasted.leftOut),
                         Dialogs::Icon::Information);
}
