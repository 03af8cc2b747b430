// SPDX-License-Identifier: MIT
#pragma once

#include "NodeTarget.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

class clsElement;
class clsKorviInterface;
class SkinCodec;

// A tree node key: "|"-joined segments, each one letter and a collection key,
// root first. "T" a template, "L" a block of Layers other than a state, "S" a
// state, "U" a USELAYER child (its key names the layer it uses, looked up in
// Layers), "E" a child element, "P" a property. So "Lui_Main|EtxtTitle|Px" is
// the property "x" of the text "txtTitle" in the layer "ui_Main". Header
// variables have no letter: their keys begin with the element's own key.
//
// Keys are made only by the builders below, so that every part of the program
// spells a node the same way; a key converts to its bytes where one is stored.
class NodeKey
{
public:
    static constexpr char Separator = '|';

    NodeKey() = default;
    explicit NodeKey(QByteArray bytes) : mBytes(std::move(bytes)) { }

    const QByteArray &bytes() const { return mBytes; }
    operator const QByteArray &() const { return mBytes; }
    bool isEmpty() const { return mBytes.isEmpty(); }

    // ---- builders -----------------------------------------------------------
    // The key of an element wherever it lives: a template, a block of Layers, a
    // header variable, or a child of any of these (found by walking the
    // document). Empty for an element the document does not hold.
    static NodeKey of(const clsKorviInterface &document, const clsElement *element);
    // A top-level block of Layers: "S" + key for a state, "L" + key otherwise.
    static NodeKey block(const clsElement &block);
    // A template of the document: "T" + key.
    static NodeKey templateKey(const clsElement &tpl);
    // A child element under this key: "|U" + key for a USELAYER, "|E" + key
    // otherwise.
    NodeKey child(const clsElement &child) const;
    // The property with collection key `propertyKey` of the element `owner`.
    static NodeKey property(const NodeKey &owner, QByteArrayView propertyKey);

    // One segment alone, as a tree node holds it: the letter and the collection
    // key ("EtxtTitle"); the key alone for a letter of 0 (a header variable).
    static QByteArray segmentOf(char letter, QByteArrayView key);
    // The key of a node under the node `above` whose own segment is `segment`
    // (a header variable's key may be empty: "|Pskin_name" is a property of it).
    static NodeKey under(const NodeKey &above, QByteArrayView segment);
    // The segments of the key, root first.
    QList<QByteArray> segments() const;

    // The key without its last segment (empty for a top-level key).
    NodeKey parent() const;
    // The letter of the key's last segment, the node's own kind.
    char ownLetter() const { return ownLetterOf(mBytes); }
    // For a property node, the property's collection key ("x[0]" of
    // "Lui_Main|EtxtTitle|Px[0]"); empty for any other node.
    QByteArray propertyKey() const;
    // Whether `other` lies under this key (a descendant, not the key itself).
    bool isAncestorOf(const NodeKey &other) const;

    // The segment letter for a top-level block: "S" for a state, "L" otherwise.
    static char blockLetter(const clsElement &block);
    // The segment letter for a child element: "U" for a USELAYER, "E" otherwise.
    static char childLetter(const clsElement &child);

    // ---- resolving ------------------------------------------------------------
    // Turns a key back into what it names. Each segment is looked up in turn; a
    // segment that finds nothing leaves nothing for the segments after it.
    static NodeTarget ResolveNodeKey(const clsKorviInterface &document, QByteArrayView key);
    // Header variables are resolved knowing that the node lies under the
    // "HEADERS" node: the first segment is looked up in Headers, the rest as usual.
    static NodeTarget ResolveHeaderNodeKey(const clsKorviInterface &document, QByteArrayView key);

    // What makes `key` no node key at all, or empty when it is one: an empty
    // key or segment, a trailing "|", a segment after the first that does not
    // begin with "E", "U" or "P", or a letter with no key after it. A key
    // typed by hand is checked with this before it is looked up, so that it
    // never names some element by accident.
    static QString problemWith(QByteArrayView key);

    // ---- node texts -------------------------------------------------------------
    // "LAYER:ui_Main": the element's type, ":" and its name, in the skin's
    // code page.
    static QString elementText(const clsElement &element, const SkinCodec &codec);
    // "x=10", or just "hide" for a property written as a bare flag.
    static QString propertyText(const clsProperty &property, const SkinCodec &codec);

    // The first letter of a key, 0 for an empty key.
    static char letterOf(QByteArrayView key);
    // The node's own letter: the first letter of the key's last segment ('E' for
    // "Lui_Main|EtxtTitle"), 0 when that segment is empty.
    static char ownLetterOf(QByteArrayView key);

    friend bool operator==(const NodeKey &a, const NodeKey &b) { return a.mBytes == b.mBytes; }
    friend bool operator!=(const NodeKey &a, const NodeKey &b) { return a.mBytes != b.mBytes; }

private:
    NodeKey joined(char letter, QByteArrayView key) const;

    QByteArray mBytes;
};
