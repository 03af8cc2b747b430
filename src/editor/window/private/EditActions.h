// SPDX-License-Identifier: MIT
#pragma once

#include "ElementCommands.h"

#include <QByteArray>
#include <QObject>

class Dialogs;
class DocumentActions;
class PropertyGridController;
class ObjectTreeModel;
class QAction;
class QMenu;
class QMenuBar;
class SkinDocument;

// The Edit menu: undo and redo, then the commands on the selected node with
// the keys people expect: Copy, Paste, Duplicate, Delete, Rename, Move Up and
// Move Down, and Add Object. Each acts on the document's current node and is
// one step of the history.
class EditActions : public QObject
{
    Q_OBJECT

public:
    EditActions(SkinDocument &document, ObjectTreeModel &tree, DocumentActions &actions, Dialogs &dialogs,
                QObject *parent = nullptr);

    // Adds the "Edit" menu, with these actions and those given after them.
    QMenu *addMenuTo(QMenuBar &bar, const QList<QAction *> &more = {});

    QAction *copyAction() const { return mCopy; }
    QAction *pasteAction() const { return mPaste; }
    QAction *duplicateAction() const { return mDuplicate; }
    QAction *deleteAction() const { return mDelete; }
    QAction *renameAction() const { return mRename; }
    QAction *moveUpAction() const { return mMoveUp; }
    QAction *moveDownAction() const { return mMoveDown; }
    // The Edit menu's "Add Object", once addMenuTo has made it.
    QMenu *addObjectMenu() const { return mAddObject; }

    void copySelected();
    void paste();
    void duplicateSelected();
    // Asks for a new name for the selected object, layer or state; a name that
    // would not read back as one word is refused with the reason, changing nothing.
    void renameSelected();
    // Delete acts on what has the focus: while the property grid has it, the
    // property on its selected row (never the object the grid shows); else
    // the current node, as the tree's Remove menus do.
    void deleteSelected();
    // Moves the selected object among its layer's objects (or the selected
    // layer among the file's blocks) one place: the order it is written and
    // drawn in.
    void moveSelectedUp();
    void moveSelectedDown();
    void aimDeleteAt(const PropertyGridController &grid) { mGrid = &grid; }

private:
    QAction *makeAction(const QString &name, const QString &text, const QKeySequence &keys,
                        void (EditActions::*slot)());
    // The current node's letter, and its key when it names an element of a
    // collection (an object, a layer or a state); empty otherwise.
    char currentLetter() const;
    QByteArray currentElementKey() const;
    void updateActions();
    void moveSelected(ReorderElementCommand::Direction direction);

    SkinDocument &mDocument;
    ObjectTreeModel &mTree;
    DocumentActions &mActions;
    Dialogs &mDialogs;
    QAction *mCopy = nullptr;
    QAction *mPaste = nullptr;
    QAction *mDuplicate = nullptr;
    QAction *mDelete = nullptr;
    QAction *mRename = nullptr;
    QAction *mMoveUp = nullptr;
    QAction *mMoveDown = nullptr;
    QMenu *mAddObject = nullptr;
    const PropertyGridController *mGrid = nullptr;
};
