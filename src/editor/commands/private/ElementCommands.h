// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <memory>

class SkinDocument;
class clsElement;

// A new element: an object of a layer (its parent node given), or a new layer
// of the document (no parent node), stored at the end of its collection under
// the unique key made from its name. Undo takes the element out whole; redo
// puts the same element back under the same key.
class AddElementCommand : public QUndoCommand
{
public:
    AddElementCommand(SkinDocument &document, const QByteArray &parentNodeKey, const QByteArray &name,
                      const QByteArray &type);
    ~AddElementCommand() override;

    void redo() override;
    void undo() override;

    // The new element's node key (known after the first redo).
    QByteArray elementNodeKey() const { return mNodeKey; }

private:
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
