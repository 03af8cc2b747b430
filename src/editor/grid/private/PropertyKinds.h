// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

// What the editor knows about a property by its (lower-case) name: which
// chooser the "..." button of its grid row opens, what its value cell holds,
// and the value it starts with when it is added from the "Add Property" menu.
// One table holds all three, so the grid, the choosers and the menu agree.
namespace PropertyKinds {

enum class Chooser {
    None,
    Colour,  // "color": the colour dialog
    Picture, // "bg", "bmp", "iconspr": a picture file of the skin
};

enum class ValueCell {
    Text,
    Number,    // positions, sizes and the like
    Templates, // one of the document's element templates
    FontTypes, // one of the document's font types
};

Chooser chooserOf(QByteArrayView name);
ValueCell valueCellOf(QByteArrayView name);
// "0" for positions and sizes, an empty quoted text for texts and file
// names, two single quotes for scripts, the no-value marker for flags, and
// nothing for any other name.
QByteArray defaultValueOf(QByteArrayView name);
// The names the skin's drawing reads, in the table's order, for the Add
// Property drop-down.
QList<QByteArray> knownNames();

} // namespace PropertyKinds
