// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <memory>

class SkinDocument;
class clsElement;

// A new element: an object of a layer (its parent node given), or a new layer
// of the document (no parent node), stored at a 0-based place of its
// collection (at its end when none is given) under the unique key made from
// its name. Undo takes the element out whole; redo puts the same element back
// under the same key.
class AddElementCommand : public QUndoCommand
{
public:
    AddElementCommand(SkinDocument &document, const QByteArray &parentNodeKey, const QByteArray &name,
                      const QByteArray &type, int index = -1);
    ~AddElementCommand() override;

    void redo() override;
    void undo() override;

    // The new element's node key (known after the first redo).
    QByteArray elementNodeKey() const { return mNodeKey; }

private:
    std::unique_ptr<clsElement> newElement() const;

    SkinDocument &mDocument;
    QByteArray mParentKey;
    QByteArray mName;
    QByteArray mType;
    QByteArray mShownBefore;
    QByteArray mNodeKey;
    // The element while it is out of the document.
    std::unique_ptr<clsElement> mTaken;
    int mIndex = -1;
};

// Takes an element (an object of a layer, or a layer of the document) out of
// its collection, whole with its properties and children. Undo puts the very
// same element back at its place under its own key.
class RemoveElementCommand : public QUndoCommand
{
public:
    RemoveElementCommand(SkinDocument &document, const QByteArray &elementNodeKey);
    ~RemoveElementCommand() override;

    void redo() override;
    void undo() override;

    // Whether the key named an element when the command was made.
    bool isValid() const { return mIndex >= 0; }

private:
    SkinDocument &mDocument;
    QByteArray mNodeKey;
    QByteArray mParentKey;
    QByteArray mShownBefore;
    std::unique_ptr<clsElement> mTaken;
    int mIndex = -1;
};

// Moves an element (an object among the objects of its block, or a block
// among the document's blocks) one place up or down, which is the order the
// file is written in and the order equal `z` values are drawn in. A block
// moves only past a block of the file it is written into (a new one: the
// open file's), since that is the only order a file holds. Undo puts it
// back; the element stays the current node.
class ReorderElementCommand : public QUndoCommand
{
public:
    enum class Direction { Up, Down };

    ReorderElementCommand(SkinDocument &document, const QByteArray &elementNodeKey, Direction direction);

    void redo() override;
    void undo() override;

    // Whether the key names an element that can move that way.
    bool isValid() const { return mFrom >= 0; }
    static bool canMove(const SkinDocument &document, const QByteArray &elementNodeKey, Direction direction);

private:
    void move(int from, int to);

    SkinDocument &mDocument;
    QByteArray mNodeKey;
    QByteArray mParentKey;
    int mFrom = -1;
    int mTo = -1;
};
