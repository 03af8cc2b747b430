// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QUndoCommand>

class SkinDocument;

// A new name for an element (an object, a layer or a state), kept at its place
// with its properties and children; its key becomes the unique key made from
// the new name. Undo gives back the old name under the very same old key.
class RenameElementCommand : public QUndoCommand
{
public:
    RenameElementCommand(SkinDocument &document, const QByteArray &elementNodeKey, const QByteArray &name);

    void redo() override;
    void undo() override;

    // Whether the key named an element of a collection when the command was made.
    bool isValid() const { return !mOldKey.isEmpty(); }
    // The element's node key after the rename (known after the first redo).
    QByteArray renamedNodeKey() const { return mNewNodeKey; }

private:
    SkinDocument &mDocument;
    QByteArray mNodeKey;
    QByteArray mName;
    QByteArray mOldName;
    QByteArray mOldKey;
    QByteArray mNewKey;
    QByteArray mNewNodeKey;
};
