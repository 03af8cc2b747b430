#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <memory>

class clsElement;
struct EditSurface;

// Takes an element (an object of a layer, or a layer of the document) out of
// its collection, whole with its properties and children, and its node out of
// the tree. Undo puts the very same element back at its place under its own
// key, and its node back at its row.
class RemoveElementCommand : public QUndoCommand
{
public:
    RemoveElementCommand(EditSurface &surface, const QByteArray &elementNodeKey);
    ~RemoveElementCommand() override;

    void redo() override;
    void undo() override;

    bool isValid() const { return mValid; }

private:
    EditSurface &mSurface;
    QByteArray mNodeKey;
    QByteArray mParentKey;
    QByteArray mShownBefore;
    char mLetter = 0;
    std::unique_ptr<clsElement> mTaken;
    int mPosition = -1;
    int mRow = -1;
    bool mValid = false;
};
