// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QModelIndex>
#include <QObject>
#include <QPoint>

#include <functional>

class Dialogs;
class ObjectTreeModel;
class QAction;
class QLabel;
class QMenu;
class QTreeView;
class SkinDocument;

// The commands that change the document from the tree: the pop-up menus of its
// nodes (add and remove layers, objects and properties), the prompt behind a
// double click on a property, undo and redo, and the question about unsaved
// changes. Every command acts on the document's current node.
class DocumentActions : public QObject
{
    Q_OBJECT

public:
    // The pop-up menus of the tree.
    struct Menus
    {
        QMenu *property;
        QMenu *layer;
        QMenu *element;
        // The entries of "Add Object", one per element type.
        QList<QAction *> addElement;
    };

    // The menus, owned by `owner`, with their entries named as the tests
    // find them; each "Add Object" entry carries its element type as its data.
    static Menus createMenus(QWidget &owner);

    DocumentActions(SkinDocument &document, ObjectTreeModel &tree, QTreeView &view, const Menus &menus,
                    Dialogs &dialogs, QObject *parent = nullptr);

    QAction *undoAction() const { return mUndo; }
    QAction *redoAction() const { return mRedo; }
    // "Modified" while the document differs from its file.
    QLabel *modifiedPanel() const { return mModified; }

    // Shows a pop-up menu at a screen point and returns the entry chosen
    // (nothing when the menu was closed). Tests replace it to choose.
    std::function<QAction *(QMenu &menu, QPoint globalPoint)> popUpMenu;

    // Right mouse button released over a node: select it, then offer its menu.
    void nodeRightReleased(const QModelIndex &node, QPoint globalPoint);
    // The menu a node offers: the property, layer or element menu, or none.
    QMenu *menuFor(const QModelIndex &node) const;
    void nodeDoubleClicked(const QModelIndex &node);

    // ---- menu commands, on the current node ---------------------------------------
    // The element types "Add Object" offers, in its order.
    static QStringList elementTypes();
    // Asks for the name of a new object of the type, proposing a free one, and
    // adds it: at the end of a selected layer, or right after a selected
    // object of one (a selected property stands for its object).
    void AddElement(const QString &type);
    // Whether AddElement has a place to put an object.
    bool canAddElement() const;
    void AddLayer();
    void AddProperty();
    void RemoveSelected();

    // True when the work may be left: nothing unsaved, or the user saved or
    // chose to discard it. Cancel (or a failed save) answers false.
    bool mayDiscardChanges();
    // The document now equals the file (just opened or saved).
    void markSaved();

signals:
    // The user chose to save before the work is left; the document is clean
    // afterwards when the save succeeded.
    void saveWanted();
    // What a removal took away, for the status bar, when it took more than
    // one node: undo (one keystroke) brings it back.
    void removed(const QString &what);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Where a new object goes: its layer's node key and its 0-based place
    // there (-1 for the end); an empty key when there is no such place.
    struct ObjectPlace
    {
        QByteArray parentKey;
        int index = -1;
    };
    ObjectPlace newObjectPlace() const;
    QStringList propertySuggestions() const;
    void createUndoActions();
    void connectMenus();
    QModelIndex currentNode() const;
    void updateModifiedPanel();

    SkinDocument &mDocument;
    ObjectTreeModel &mTree;
    QTreeView &mView;
    Menus mMenus;
    Dialogs &mDialogs;
    QAction *mUndo = nullptr;
    QAction *mRedo = nullptr;
    QLabel *mModified = nullptr;
};
