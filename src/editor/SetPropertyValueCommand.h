#pragma once

#include <QByteArray>
#include <QUndoCommand>

struct EditSurface;

// A new value for one property, given by its node key ("Lui_Main|EtxtTitle|Px"):
// the value typed in the grid, entered in the prompt, or chosen with the colour
// or picture chooser. Undo puts the old value back.
class SetPropertyValueCommand : public QUndoCommand
{
public:
    // `shownKey` is the node shown after the change (the property's owner as the
    // grid shows it, or the property node itself after a prompt).
    SetPropertyValueCommand(EditSurface &surface, const QByteArray &propertyNodeKey,
                            const QByteArray &newValue, const QByteArray &shownKey);

    void redo() override;
    void undo() override;

    // Whether the key named a property when the command was made.
    bool isValid() const { return mValid; }

private:
    void apply(const QByteArray &value, const QByteArray &shownKey);

    EditSurface &mSurface;
    QByteArray mKey;
    QByteArray mOldValue;
    QByteArray mNewValue;
    QByteArray mShownKey;
    QByteArray mShownBefore;
    bool mValid = false;
};
