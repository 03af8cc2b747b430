#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <array>

struct EditSurface;

// A new place for an object after a drag of the moving frame or an arrow key:
// its "x" and "y" set to new texts, each added when the object has none. Undo
// gives back the old texts, or takes away what was added. Moves of the same
// object that follow each other within a second make one step.
class MoveElementCommand : public QUndoCommand
{
public:
    static constexpr int Id = 0x4d4f5645;
    static constexpr qint64 MergeWindowMs = 1000;

    MoveElementCommand(EditSurface &surface, const QByteArray &elementNodeKey, const QByteArray &newX,
                       const QByteArray &newY, qint64 timeMs);

    void redo() override;
    void undo() override;
    int id() const override { return Id; }
    bool mergeWith(const QUndoCommand *other) override;

private:
    struct Coordinate
    {
        QByteArray name;
        QByteArray newValue;
        QByteArray oldValue;
        // The property was missing and is added by this move.
        bool added = false;
        bool known = false;
    };

    void set(Coordinate &coordinate);
    void restore(Coordinate &coordinate);

    EditSurface &mSurface;
    QByteArray mNodeKey;
    std::array<Coordinate, 2> mCoordinates;
    qint64 mTimeMs;
};
