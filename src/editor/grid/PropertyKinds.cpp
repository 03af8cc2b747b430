// SPDX-License-Identifier: MIT
#include "PropertyKinds.h"

#include "clsProperty.h"

namespace {

using PropertyKinds::Chooser;
using PropertyKinds::ValueCell;

enum class Default { Nothing, Zero, EmptyText, EmptyScript, Flag };

struct Kind
{
    const char *name;
    Chooser chooser;
    ValueCell cell;
    Default value;
};

const Kind kKinds[] = {
    { "x", Chooser::None, ValueCell::Number, Default::Zero },
    { "y", Chooser::None, ValueCell::Number, Default::Zero },
    { "z", Chooser::None, ValueCell::Number, Default::Zero },
    { "w", Chooser::None, ValueCell::Number, Default::Zero },
    { "h", Chooser::None, ValueCell::Number, Default::Zero },
    { "fontsize", Chooser::None, ValueCell::Number, Default::Nothing },
    { "padding", Chooser::None, ValueCell::Number, Default::Nothing },
    { "template", Chooser::None, ValueCell::Templates, Default::Nothing },
    { "fonttype", Chooser::None, ValueCell::FontTypes, Default::Nothing },
    { "color", Chooser::Colour, ValueCell::Text, Default::Nothing },
    { "bg", Chooser::Picture, ValueCell::Text, Default::Nothing },
    { "bmp", Chooser::Picture, ValueCell::Text, Default::EmptyText },
    { "iconspr", Chooser::Picture, ValueCell::Text, Default::EmptyText },
    { "font", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "text", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "value", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "align", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "valign", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "bmpalign", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "bmpvalign", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "element_template", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "listmodel", Chooser::None, ValueCell::Text, Default::EmptyText },
    { "onrelease", Chooser::None, ValueCell::Text, Default::EmptyScript },
    { "onlongclick", Chooser::None, ValueCell::Text, Default::EmptyScript },
    { "hide", Chooser::None, ValueCell::Text, Default::Flag },
    { "id", Chooser::None, ValueCell::Text, Default::Flag },
    { "nostress", Chooser::None, ValueCell::Text, Default::Flag },
    { "simpleclicklist", Chooser::None, ValueCell::Text, Default::Flag },
    { "disable", Chooser::None, ValueCell::Text, Default::Flag },
    { "invert", Chooser::None, ValueCell::Text, Default::Flag },
    // The rest of what the drawing reads: text cells, as any other name.
    { "paddingleft", Chooser::None, ValueCell::Text, Default::Nothing },
    { "paddingright", Chooser::None, ValueCell::Text, Default::Nothing },
    { "iconalign", Chooser::None, ValueCell::Text, Default::Nothing },
    { "iconvalign", Chooser::None, ValueCell::Text, Default::Nothing },
    { "iconphase", Chooser::None, ValueCell::Text, Default::Nothing },
    { "sprind", Chooser::None, ValueCell::Text, Default::Nothing },
    { "row", Chooser::None, ValueCell::Text, Default::Nothing },
    { "col", Chooser::None, ValueCell::Text, Default::Nothing },
    { "cellw", Chooser::None, ValueCell::Text, Default::Nothing },
    { "cellh", Chooser::None, ValueCell::Text, Default::Nothing },
};

// Names are matched exactly: the editor lower-cases a name before it asks.
const Kind *kindOf(QByteArrayView name)
{
    for (const Kind &kind : kKinds) {
        if (name == kind.name)
            return &kind;
    }
    return nullptr;
}

} // namespace

namespace PropertyKinds {

Chooser chooserOf(QByteArrayView name)
{
    const Kind *kind = kindOf(name);
    return kind ? kind->chooser : Chooser::None;
}

ValueCell valueCellOf(QByteArrayView name)
{
    const Kind *kind = kindOf(name);
    return kind ? kind->cell : ValueCell::Text;
}

QList<QByteArray> knownNames()
{
    QList<QByteArray> names;
    for (const Kind &kind : kKinds)
        names << QByteArray(kind.name);
    return names;
}

QByteArray defaultValueOf(QByteArrayView name)
{
    const Kind *kind = kindOf(name);
    switch (kind ? kind->value : Default::Nothing) {
    case Default::Zero:
        return QByteArrayLiteral("0");
    case Default::EmptyText:
        return QByteArrayLiteral("\"\"");
    case Default::EmptyScript:
        return QByteArrayLiteral("''");
    case Default::Flag:
        return clsProperty::noValue();
    case Default::Nothing:
        break;
    }
    return QByteArray();
}

} // namespace PropertyKinds
