#pragma once

#include <QByteArray>

class clsElement;
class clsElements;
struct EditSurface;

// Where an element of a tree node lives: the document's layers for a node at
// the top of the tree, the sub-elements of the parent node's element otherwise.
namespace ElementPlace {

// The collection that holds the children of the node `parentNodeKey`; the
// layers for an empty key. None when the key names no element.
clsElements *collectionUnder(const EditSurface &surface, const QByteArray &parentNodeKey);

// The segment letter of an element's node: "L"/"S" at the top, "E"/"U" below.
char letterFor(const clsElement &element, const QByteArray &parentNodeKey);

// The parent's key joined with the letter: "Lui_Main|E", or "L" at the top.
QByteArray prefixFor(const QByteArray &parentNodeKey, char letter);

} // namespace ElementPlace
