// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <functional>

class clsElement;
class clsKorviInterface;

// Visits every element of a document with the node key the object tree gives
// it: header variables (keys without a letter), templates ("T"), font types,
// then the blocks of Layers ("L" or "S"), each element before its children
// ("E", or "U" for a USELAYER). Font types have no node in the tree: their key
// is empty. Imported templates get the key they would have, which resolves.
namespace SkinElementWalk {

struct Visit
{
    const clsElement &element;
    const QByteArray &nodeKey;
    // The element it stands in; none at the top of a collection.
    const clsElement *parent;
};

void forEach(const clsKorviInterface &document, const std::function<void(const Visit &)> &visit);

} // namespace SkinElementWalk
