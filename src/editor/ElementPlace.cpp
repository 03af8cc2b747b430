#include "ElementPlace.h"

#include "EditSurface.h"
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "clsKorviInterface.h"

namespace ElementPlace {

clsElements *collectionUnder(const EditSurface &surface, const QByteArray &parentNodeKey)
{
    if (parentNodeKey.isEmpty())
        return &surface.tree.document().Layers();
    const NodeTarget parent = surface.resolve(parentNodeKey);
    return parent.found ? &parent.element->SubElements() : nullptr;
}

char letterFor(const clsElement &element, const QByteArray &parentNodeKey)
{
    return parentNodeKey.isEmpty() ? NodeKey::blockLetter(element) : NodeKey::childLetter(element);
}

QByteArray prefixFor(const QByteArray &parentNodeKey, char letter)
{
    if (parentNodeKey.isEmpty())
        return QByteArray(1, letter);
    return parentNodeKey + NodeKey::Separator + letter;
}

} // namespace ElementPlace
