// SPDX-License-Identifier: MIT
#include "PropertyGridFiller.h"

#include "InheritedValues.h"
#include "NodeKey.h"
#include "PowGrid.h"
#include "PropertyKinds.h"
#include "Twips.h"
#include "clsComboList.h"
#include "clsKorviInterface.h"

namespace {

// Names, keys and node keys: ASCII words.
QString shown(QByteArrayView bytes)
{
    return SkinCodec::wordText(bytes);
}

// The names of a collection's entries, in document order, as drop-down choices.
std::shared_ptr<clsComboList> namesOf(const clsElements &entries)
{
    auto list = std::make_shared<clsComboList>();
    for (const clsElement *entry : entries) {
        const QString name = shown(entry->strName());
        if (!list->ItemExist(name))
            list->Add(name, name);
    }
    return list;
}

} // namespace

void PropertyGridFiller::setUpColumns(PowGrid &grid)
{
    // Each column starts 100 pixels wide (the grid keeps widths in twips).
    const int width = Twips::fromPixelsX(100, &grid);
    clsHeaders *headers = grid.Headers();
    headers->Clear();
    Header *name = headers->Add(QStringLiteral("Property"), width, true, dtText);
    // Names are changed through the tree's menus, not typed over in the grid.
    name->ColumnEditable = false;
    headers->Add(QStringLiteral("Value"), width, true, dtText);
    headers->Add(QStringLiteral("IDKey"), width, false, dtText);
    headers->Add(QStringLiteral("NodeKey"), width, false, dtText);
    Header *button = headers->Add(QStringLiteral("..."), width, true, dtButton);
    // A button is pressed, not edited: the row's own value type stays off it.
    button->ColumnEditable = false;
    // Only the rows whose property has a chooser show a button.
    button->HideEmptyButtons = true;
}

int PropertyGridFiller::valueTypeFor(const QByteArray &name)
{
    switch (PropertyKinds::valueCellOf(name)) {
    case PropertyKinds::ValueCell::Number:
        return dtNumber;
    case PropertyKinds::ValueCell::Templates:
    case PropertyKinds::ValueCell::FontTypes:
        return dtItemCombo;
    case PropertyKinds::ValueCell::Text:
        break;
    }
    return dtNone;
}

bool PropertyGridFiller::hasChooser(const QByteArray &name)
{
    return PropertyKinds::chooserOf(name) != PropertyKinds::Chooser::None;
}

// The value cell's kind and choices follow the property's name.
void PropertyGridFiller::setValueCell(PowGridItem &row, const QByteArray &name,
                                      const clsKorviInterface &document, Choices &choices)
{
    if (hasChooser(name))
        row.setCellText(ColButton, QStringLiteral("..."));
    row.DataType = valueTypeFor(name);
    switch (PropertyKinds::valueCellOf(name)) {
    case PropertyKinds::ValueCell::Templates:
        if (!choices.templates)
            choices.templates = namesOf(document.Templates());
        row.ComboList = choices.templates;
        break;
    case PropertyKinds::ValueCell::FontTypes:
        if (!choices.fonts)
            choices.fonts = namesOf(document.Fonts());
        row.ComboList = choices.fonts;
        break;
    default:
        break;
    }
}

void PropertyGridFiller::fill(PowGrid &grid, const clsElement &element,
                              const QByteArray &ownerNodeKey, const clsKorviInterface &document,
                              bool withInherited)
{
    grid.Items()->Clear();
    Choices choices;
    for (const clsProperty property : element.Properties()) {
        const QByteArray name = property.IDKey();
        const QByteArrayView value = property.valueView();
        PowGridItem *row = grid.Items()->Add();
        row->setCellText(ColProperty, shown(name));
        row->setCellText(ColValue, value == clsProperty::noValue() ? QString() : document.codec().toText(value));
        row->setCellText(ColIDKey, shown(property.Key()));
        row->setCellText(ColNodeKey, shown(NodeKey::property(NodeKey(ownerNodeKey), property.keyView()).bytes()));
        setValueCell(*row, name, document, choices);
    }
    if (withInherited)
        addInherited(grid, element, ownerNodeKey, document, choices);
    grid.RedrawGrid();
}

// Below the object's own rows, dimmed: what it takes from its templates and font
// types. Such a row has no property key; its node key names the property the
// object would have, so that a value typed there becomes the object's own.
void PropertyGridFiller::addInherited(PowGrid &grid, const clsElement &element,
                                      const QByteArray &ownerNodeKey, const clsKorviInterface &document,
                                      Choices &choices)
{
    for (const InheritedValues::Value &inherited : InheritedValues::of(document, element)) {
        PowGridItem *row = grid.Items()->Add();
        row->Dimmed = true;
        row->ToolTip = QStringLiteral("From \"%1\"").arg(shown(inherited.from));
        row->setCellText(ColProperty, shown(inherited.name));
        row->setCellText(ColValue, inherited.value == clsProperty::noValue() ? QString()
                                                                              : document.codec().toText(inherited.value));
        row->setCellText(ColNodeKey, shown(NodeKey::property(NodeKey(ownerNodeKey), inherited.name).bytes()));
        setValueCell(*row, inherited.name, document, choices);
    }
}

bool PropertyGridFiller::isInherited(const PowGridItem &row)
{
    return row.Dimmed && row.CellText(ColIDKey).isEmpty();
}
