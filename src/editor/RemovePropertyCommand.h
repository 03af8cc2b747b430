#pragma once

#include <QByteArray>
#include <QUndoCommand>

struct EditSurface;

// Takes a property and its node away. Undo puts the property back at its place
// in the owner's list, under its own key and with its value, and its node back
// at its row.
class RemovePropertyCommand : public QUndoCommand
{
public:
    RemovePropertyCommand(EditSurface &surface, const QByteArray &propertyNodeKey);

    void redo() override;
    void undo() override;

    bool isValid() const { return mValid; }

private:
    EditSurface &mSurface;
    QByteArray mOwnerKey;
    QByteArray mKey;
    QByteArray mValue;
    QByteArray mShownBefore;
    int mPosition = -1;
    int mRow = -1;
    bool mValid = false;
};
