#pragma once

#include <QByteArray>
#include <QUndoCommand>

struct EditSurface;

// A new property of an element or template: stored at the end of the owner's
// properties under the unique key made from its name, with its node appended
// under the owner's node. Undo takes both out again; redo puts them back under
// the same key at the same places.
class AddPropertyCommand : public QUndoCommand
{
public:
    AddPropertyCommand(EditSurface &surface, const QByteArray &ownerNodeKey,
                       const QByteArray &name, const QByteArray &value);

    void redo() override;
    void undo() override;

    // The key the property was stored under (known after the first redo).
    QByteArray propertyKey() const { return mKey; }

private:
    EditSurface &mSurface;
    QByteArray mOwnerKey;
    QByteArray mName;
    QByteArray mValue;
    QByteArray mShownBefore;
    QByteArray mKey;
    int mPosition = -1;
    int mRow = -1;
};
