// SPDX-License-Identifier: MIT
#pragma once

#include "UndoCommandId.h"

#include <QByteArray>
#include <QList>
#include <QUndoCommand>

class SkinDocument;

// New texts for properties of one element: a value typed in the grid or the
// prompt, or a new place after a drag. Undo gives back the old texts. A command
// merges with the next one of its kind for the same properties (within its
// merge window), and makes itself obsolete when it changed nothing or its
// element can no longer be found, so the history lists only changes that
// happened.
class ChangeValueCommand : public QUndoCommand
{
public:
    // A property, by its key, and the text it gets.
    struct Value
    {
        QByteArray key;
        QByteArray newValue;
    };

    struct Options
    {
        UndoCommandId id;
        // A property the element does not have is added (and taken away by undo).
        bool addMissing = false;
        // Commands of one kind merge when the later one comes no more than this
        // many milliseconds after the earlier one; negative: always.
        qint64 mergeWindowMs = -1;
        qint64 timeMs = 0;
    };

    // `shownKey` is the node made current after the change.
    ChangeValueCommand(SkinDocument &document, const QByteArray &ownerKey, const QList<Value> &values,
                       const QByteArray &shownKey, const Options &options);

    void redo() override;
    void undo() override;
    int id() const override { return int(mOptions.id); }
    bool mergeWith(const QUndoCommand *other) override;

private:
    struct Change
    {
        QByteArray key;
        QByteArray newValue;
        QByteArray oldValue;
        // The property was missing and is added by this command.
        bool added = false;
        // The old value was read (on the first redo).
        bool known = false;
    };

    bool apply(Change &change);
    bool restore(const Change &change);
    bool changesNothing() const;

    SkinDocument &mDocument;
    QByteArray mOwnerKey;
    QList<Change> mChanges;
    QByteArray mShownKey;
    QByteArray mShownBefore;
    Options mOptions;
};

// A new value for one property, given by its node key ("Lui_Main|EtxtTitle|Px").
// Repeated edits of one value make one step.
class SetPropertyValueCommand : public ChangeValueCommand
{
public:
    SetPropertyValueCommand(SkinDocument &document, const QByteArray &propertyNodeKey,
                            const QByteArray &newValue, const QByteArray &shownKey);
};

// A new place for an object after a drag of the moving frame or an arrow key:
// its "x" and "y" set to new texts, each added when the object has none. Moves
// of the same object that follow each other within a second make one step.
class MoveElementCommand : public ChangeValueCommand
{
public:
    static constexpr qint64 MergeWindowMs = 1000;

    MoveElementCommand(SkinDocument &document, const QByteArray &elementNodeKey, const QByteArray &newX,
                       const QByteArray &newY, qint64 timeMs);
};
