#include "MoveElementCommand.h"

#include "EditSurface.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsElement.h"

MoveElementCommand::MoveElementCommand(EditSurface &surface, const QByteArray &elementNodeKey,
                                       const QByteArray &newX, const QByteArray &newY, qint64 timeMs)
    : mSurface(surface)
    , mNodeKey(elementNodeKey)
    , mTimeMs(timeMs)
{
    mCoordinates[0].name = QByteArrayLiteral("x");
    mCoordinates[0].newValue = newX;
    mCoordinates[1].name = QByteArrayLiteral("y");
    mCoordinates[1].newValue = newY;
    const NodeTarget target = surface.resolve(elementNodeKey);
    setText(QStringLiteral("Move %1").arg(target.found ? QString::fromLatin1(target.element->strName())
                                                       : QString()));
}

void MoveElementCommand::redo()
{
    for (Coordinate &coordinate : mCoordinates)
        set(coordinate);
    mSurface.show(mNodeKey);
}

void MoveElementCommand::undo()
{
    // The last change is taken back first, so an added "y" goes before an
    // added "x" and the node rows are those of the time it was made.
    restore(mCoordinates[1]);
    restore(mCoordinates[0]);
    mSurface.show(mNodeKey);
}

// The shared property setter: the value of an existing property, else a new
// property with its node; then the node's text.
void MoveElementCommand::set(Coordinate &coordinate)
{
    const NodeTarget target = mSurface.resolve(mNodeKey);
    if (!target.found)
        return;
    clsProperties &properties = target.element->Properties();
    const QByteArray propertyNodeKey = mNodeKey + NodeKey::Separator + 'P' + coordinate.name;
    const clsProperty property = properties.Find(coordinate.name);
    if (!coordinate.known) {
        coordinate.known = true;
        coordinate.added = property.isNull();
        coordinate.oldValue = property.isNull() ? QByteArray() : property.value();
    }
    if (property.isNull()) {
        properties.Add(coordinate.name, coordinate.newValue);
        mSurface.tree.AddPropertyNode(mSurface.node(mNodeKey), coordinate.name);
    } else {
        property.setValue(coordinate.newValue);
        mSurface.tree.RefreshNodeText(mSurface.node(propertyNodeKey));
    }
}

void MoveElementCommand::restore(Coordinate &coordinate)
{
    const NodeTarget target = mSurface.resolve(mNodeKey);
    if (!target.found || !coordinate.known)
        return;
    clsProperties &properties = target.element->Properties();
    const QByteArray propertyNodeKey = mNodeKey + NodeKey::Separator + 'P' + coordinate.name;
    if (coordinate.added) {
        properties.Remove(coordinate.name);
        mSurface.tree.RemoveNode(mSurface.node(propertyNodeKey));
        return;
    }
    const clsProperty property = properties.Find(coordinate.name);
    if (property.isNull())
        return;
    property.setValue(coordinate.oldValue);
    mSurface.tree.RefreshNodeText(mSurface.node(propertyNodeKey));
}

bool MoveElementCommand::mergeWith(const QUndoCommand *other)
{
    const auto *next = dynamic_cast<const MoveElementCommand *>(other);
    if (!next || next->mNodeKey != mNodeKey || next->mTimeMs - mTimeMs > MergeWindowMs
        || next->mTimeMs < mTimeMs)
        return false;
    for (size_t i = 0; i < mCoordinates.size(); ++i)
        mCoordinates[i].newValue = next->mCoordinates[i].newValue;
    mTimeMs = next->mTimeMs;
    return true;
}
