#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <memory>

class clsElement;
struct EditSurface;

// A new element: an object of a layer (its parent node given), or a new layer
// of the document (no parent node). It is stored at the end of its collection
// under the unique key made from its name and its node appended under the
// parent node. Undo takes the element out whole; redo puts the same element
// back under the same key.
class AddElementCommand : public QUndoCommand
{
public:
    AddElementCommand(EditSurface &surface, const QByteArray &parentNodeKey, const QByteArray &name,
                      const QByteArray &type);
    ~AddElementCommand() override;

    void redo() override;
    void undo() override;

    // The new element's node key (known after the first redo).
    QByteArray elementNodeKey() const { return mNodeKey; }

private:
    EditSurface &mSurface;
    QByteArray mParentKey;
    QByteArray mName;
    QByteArray mType;
    QByteArray mShownBefore;
    QByteArray mNodeKey;
    // The element while it is out of the document.
    std::unique_ptr<clsElement> mTaken;
    int mPosition = -1;
    int mRow = -1;
};
