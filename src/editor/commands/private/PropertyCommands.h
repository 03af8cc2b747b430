// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QUndoCommand>

class SkinDocument;

// A new property of an element or template: stored at the end of the owner's
// properties under the unique key made from its name. Undo takes it out again;
// redo puts it back under the same key at the same place.
class AddPropertyCommand : public QUndoCommand
{
public:
    AddPropertyCommand(SkinDocument &document, const QByteArray &ownerNodeKey, const QByteArray &name,
                       const QByteArray &value);

    void redo() override;
    void undo() override;

    // The key the property was stored under (known after the first redo).
    QByteArray propertyKey() const { return mKey; }

private:
    SkinDocument &mDocument;
    QByteArray mOwnerKey;
    QByteArray mName;
    QByteArray mValue;
    QByteArray mShownBefore;
    QByteArray mKey;
    int mIndex = -1;
};

// Takes a property away. Undo puts it back at its place in the owner's list,
// under its own key and with its value.
class RemovePropertyCommand : public QUndoCommand
{
public:
    RemovePropertyCommand(SkinDocument &document, const QByteArray &propertyNodeKey);

    void redo() override;
    void undo() override;

    // Whether the key named a property when the command was made.
    bool isValid() const { return mIndex >= 0; }

private:
    SkinDocument &mDocument;
    QByteArray mOwnerKey;
    QByteArray mKey;
    QByteArray mValue;
    QByteArray mShownBefore;
    int mIndex = -1;
};
