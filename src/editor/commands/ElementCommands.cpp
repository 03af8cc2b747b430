// SPDX-License-Identifier: MIT
#include "SkinCodec.h"
#include "ElementCommands.h"

#include "NodeKey.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "clsElements.h"
#include "clsKorviInterface.h"

#include <tuple>
#include <utility>

AddElementCommand::AddElementCommand(SkinDocument &document, const QByteArray &parentNodeKey,
                                     const QByteArray &name, const QByteArray &type, int index)
    : mDocument(document)
    , mParentKey(parentNodeKey)
    , mName(name)
    , mType(type)
    , mShownBefore(document.currentKey())
    , mIndex(index)
{
    setText(QStringLiteral("Add %1 %2").arg(SkinCodec::wordText(type), SkinCodec::wordText(name)));
}

AddElementCommand::~AddElementCommand() = default;

void AddElementCommand::redo()
{
    const clsElement *element = mTaken ? mDocument.insertElement(mParentKey, mIndex, std::move(mTaken))
        : mIndex < 0                   ? mDocument.addElement(mParentKey, mName, mType)
                                       : mDocument.insertNewElement(mParentKey, mIndex, newElement());
    if (!element) {
        setObsolete(true);
        return;
    }
    const NodeKey parent(mParentKey);
    mIndex = mDocument.childrenOf(mParentKey)->positionOf(element);
    mNodeKey = parent.isEmpty() ? NodeKey::block(*element) : parent.child(*element);
    // A new layer is only added to the tree; a new object is selected on its
    // layer, ready for its properties.
    if (!mParentKey.isEmpty())
        mDocument.setCurrent(mNodeKey);
}

std::unique_ptr<clsElement> AddElementCommand::newElement() const
{
    auto element = std::make_unique<clsElement>();
    element->setStrName(mName);
    element->setElementType(mType);
    return element;
}

void AddElementCommand::undo()
{
    mDocument.setCurrent(mShownBefore);
    mTaken = mDocument.takeElement(mParentKey, mIndex);
    if (!mTaken)
        setObsolete(true);
}

RemoveElementCommand::RemoveElementCommand(SkinDocument &document, const QByteArray &elementNodeKey)
    : mDocument(document)
    , mNodeKey(elementNodeKey)
    , mParentKey(NodeKey(elementNodeKey).parent())
    , mShownBefore(document.currentKey())
{
    const clsElement *element = document.elementAt(elementNodeKey);
    const clsElements *collection = document.childrenOf(mParentKey);
    if (!element || !collection)
        return;
    mIndex = collection->positionOf(element);
    setText(QStringLiteral("Remove %1").arg(SkinCodec::wordText(element->strName())));
}

RemoveElementCommand::~RemoveElementCommand() = default;

void RemoveElementCommand::redo()
{
    if (isValid())
        mDocument.setCurrent(mParentKey);
    mTaken = isValid() ? mDocument.takeElement(mParentKey, mIndex) : nullptr;
    if (!mTaken)
        setObsolete(true);
}

void RemoveElementCommand::undo()
{
    if (!mDocument.insertElement(mParentKey, mIndex, std::move(mTaken))) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mShownBefore);
}

namespace {

int stepOf(ReorderElementCommand::Direction direction)
{
    return direction == ReorderElementCommand::Direction::Up ? -1 : 1;
}

// The file a block is written into: its own, or for a new one the open file,
// which receives new blocks.
int fileOf(const SkinDocument &document, const clsElement &block)
{
    return block.sourceFile() != 0 ? block.sourceFile()
                                   : document.document().Sources().numberOf(document.context().UiFilePath);
}

// The element's place among its siblings and the place it would move to; -1
// for both when it cannot move that way.
std::pair<int, int> placesOf(const SkinDocument &document, const QByteArray &elementNodeKey,
                             ReorderElementCommand::Direction direction)
{
    const QByteArray parentKey = NodeKey(elementNodeKey).parent();
    const clsElement *element = document.elementAt(elementNodeKey);
    const clsElements *siblings = document.childrenOf(parentKey);
    // A used layer's key names the layer it uses, which lives elsewhere.
    const int from = element && siblings ? siblings->positionOf(element) : -1;
    const int to = from + stepOf(direction);
    if (from < 0 || to < 0 || to >= siblings->Count())
        return { -1, -1 };
    // Each file keeps its own blocks in their order: passing a block of
    // another file (a shared scheme's, say) is no order a file can hold.
    if (parentKey.isEmpty() && fileOf(document, *siblings->at(to)) != fileOf(document, *element))
        return { -1, -1 };
    return { from, to };
}

QString directionWord(ReorderElementCommand::Direction direction)
{
    return direction == ReorderElementCommand::Direction::Up ? QStringLiteral("up") : QStringLiteral("down");
}

} // namespace

ReorderElementCommand::ReorderElementCommand(SkinDocument &document, const QByteArray &elementNodeKey,
                                             Direction direction)
    : mDocument(document)
    , mNodeKey(elementNodeKey)
    , mParentKey(NodeKey(elementNodeKey).parent())
{
    std::tie(mFrom, mTo) = placesOf(document, elementNodeKey, direction);
    if (isValid())
        setText(QStringLiteral("Move %1 %2")
                    .arg(SkinCodec::wordText(document.elementAt(elementNodeKey)->strName()), directionWord(direction)));
}

bool ReorderElementCommand::canMove(const SkinDocument &document, const QByteArray &elementNodeKey,
                                    Direction direction)
{
    return placesOf(document, elementNodeKey, direction).first >= 0;
}

void ReorderElementCommand::redo()
{
    move(mFrom, mTo);
}

void ReorderElementCommand::undo()
{
    move(mTo, mFrom);
}

// The parent is shown while the element is out, as a removal does, so that
// the tree's current node does not wander to a neighbour on the way.
void ReorderElementCommand::move(int from, int to)
{
    mDocument.setCurrent(mParentKey);
    if (!isValid() || !mDocument.moveElement(mParentKey, from, to)) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mNodeKey);
}
