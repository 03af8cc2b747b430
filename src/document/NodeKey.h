#pragma once

#include "NodeTarget.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

class clsElement;
class clsKorviInterface;

// Tree node keys: "|"-joined segments, each one letter and a collection key,
// root first. "T" a template, "L" a block of Layers other than a state, "S" a
// state, "U" a USELAYER child (its key names the layer it uses, looked up in
// Layers), "E" a child element, "P" a property. So "Lui_Main|EtxtTitle|Px" is
// the property "x" of the text "txtTitle" in the layer "ui_Main".
namespace NodeKey {

constexpr char Separator = '|';

// The segment letter for a top-level block: "S" for a state, "L" otherwise.
char blockLetter(const clsElement &block);
// The segment letter for a child element: "U" for a USELAYER, "E" otherwise.
char childLetter(const clsElement &child);

// Turns a key back into what it names. Each segment is looked up in turn; a
// segment that finds nothing leaves nothing for the segments after it.
NodeTarget ResolveNodeKey(const clsKorviInterface &document, QByteArrayView key);

// Header variables have no letter of their own: their keys begin directly with
// the element's key, so they are resolved knowing that the node lies under the
// "HEADERS" node: the first segment is looked up in Headers, the rest as usual.
NodeTarget ResolveHeaderNodeKey(const clsKorviInterface &document, QByteArrayView key);

// "LAYER:ui_Main": the element's type, ":" and its name.
QString elementText(const clsElement &element);
// "x=10", or just "hide" for a property written as a bare flag.
QString propertyText(const clsProperty &property);

// The first letter of a key, 0 for an empty key.
char letterOf(QByteArrayView key);
// The node's own letter: the first letter of the key's last segment ('E' for
// "Lui_Main|EtxtTitle"), 0 when that segment is empty.
char ownLetterOf(QByteArrayView key);

} // namespace NodeKey
