// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class PowGrid;
class PowGridItem;
class clsComboList;
class clsElement;
class clsKorviInterface;

// Fills the property grid of the main window with the properties of one object:
// one row per property in order, with the name, the value ("" for a bare flag),
// the property's key, the key of its tree node, and the "..." button for
// properties that have a chooser. The kind of the value cell follows the name:
// "template" and "fonttype" choose among the document's templates and font
// types, positions and sizes are numbers. Below them, when asked, dimmed, come the values the
// object inherits from its templates and font types, each with a tooltip naming
// where it comes from.
class PropertyGridFiller
{
public:
    // The grid's columns, 0-based.
    enum Column { ColProperty = 0, ColValue = 1, ColIDKey = 2, ColNodeKey = 3, ColButton = 4 };

    // The five columns: "Property", "Value", hidden "IDKey" and "NodeKey", "...".
    static void setUpColumns(PowGrid &grid);

    // Clears the rows, then adds one per property of `element`; `ownerNodeKey`
    // is the key of the element's tree node.
    // With `withInherited`, the inherited values follow the object's own rows.
    static void fill(PowGrid &grid, const clsElement &element, const QByteArray &ownerNodeKey,
                     const clsKorviInterface &document, bool withInherited = false);

    // The data type of the value cell for a property name (dtNone: the column's).
    static int valueTypeFor(const QByteArray &name);
    // Whether a property name has a chooser behind the "..." button.
    static bool hasChooser(const QByteArray &name);
    // Whether a row shows an inherited value rather than a property of the object.
    static bool isInherited(const PowGridItem &row);

private:
    // The drop-down choices, made once per fill when a row needs them.
    struct Choices
    {
        std::shared_ptr<clsComboList> templates;
        std::shared_ptr<clsComboList> fonts;
    };
    static void setValueCell(PowGridItem &row, const QByteArray &name, const clsKorviInterface &document,
                             Choices &choices);
    static void addInherited(PowGrid &grid, const clsElement &element, const QByteArray &ownerNodeKey,
                             const clsKorviInterface &document, Choices &choices);
};
