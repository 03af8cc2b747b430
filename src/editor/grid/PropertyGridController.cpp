// SPDX-License-Identifier: MIT
#include "PropertyGridController.h"

#include "ChangeValueCommand.h"
#include "Header.h"
#include "ColorValueText.h"
#include "Dialogs.h"
#include "NodeKey.h"
#include "PowGrid.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "PropertyKinds.h"
#include "ResourceLookup.h"
#include "SkinDocument.h"
#include "Twips.h"
#include "TypedText.h"
#include "clsKorviInterface.h"

#include <QFileInfo>
#include <QAbstractButton>
#include <QLineEdit>
#include <QScrollBar>

#include <algorithm>
#include <QUndoStack>

namespace {

// Skins draw JPEG files too: the first filter, the one the chooser starts
// with, shows every kind of picture a skin names; the narrower bitmap and
// sprite filter and "All Files" follow as they always were.
const QString kImageFilter = QStringLiteral("Skin Pictures (*.bmp;*.jpg;*.jpeg;*.spr)|*.bmp;*.jpg;*.jpeg;*.spr|"
                                            "Korvi Image Files (*.bmp;*.spr)|*.bmp;*.spr|All Files|*.*");

// The narrowest the value column is made when the grid is narrow.
constexpr int kLeastValuePixels = 60;

} // namespace

PropertyGridController::PropertyGridController(PowGrid &grid, SkinDocument &document,
                                               const ResourceLookup &lookup, Dialogs &dialogs,
                                               QObject *parent)
    : QObject(parent)
    , mGrid(grid)
    , mDocument(document)
    , mLookup(lookup)
    , mDialogs(dialogs)
{
    setObjectName(QStringLiteral("PropertyGridController"));
    PropertyGridFiller::setUpColumns(grid);
    // The row Delete acts on is always seen.
    grid.setShowSelectedRow(true);
    connect(&grid, &PowGrid::ItemChanged, this, &PropertyGridController::itemChanged);
    connect(&grid, &PowGrid::Resize, this, &PropertyGridController::stretchValueColumn);
    connect(&grid, &PowGrid::ColumnResized, this, &PropertyGridController::stretchValueColumn);
    // Another code page shows the same bytes as other text.
    connect(&document, &SkinDocument::codecChanged, this, &PropertyGridController::rowsWanted);
}

void PropertyGridController::fill(const clsElement &element, const QByteArray &nodeKey)
{
    // The same object listed again (after an edit) keeps its selected row, so
    // that the keyboard goes on from where it was.
    const PowGridItem *selected = mGrid.SelectedItem();
    const QString selectedName = selected && nodeKey == mFilledFor
        ? selected->CellText(PropertyGridFiller::ColProperty) : QString();
    mFilledFor = nodeKey;
    PropertyGridFiller::fill(mGrid, element, nodeKey, mDocument.document(), mInherited && mInherited->isChecked());
    for (int row = 1; !selectedName.isEmpty() && row <= mGrid.Items()->Count(); ++row) {
        if (mGrid.Items()->Item(row)->CellText(PropertyGridFiller::ColProperty) == selectedName) {
            mGrid.setSelRow(row);
            break;
        }
    }
    applyFilter();
    // The rows may have brought or taken away the vertical bar.
    stretchValueColumn();
}

// The values are what the user reads and types: their column takes the
// width the other columns leave, however wide the grid is made, and never
// less than a narrow column's width.
void PropertyGridController::stretchValueColumn()
{
    clsHeaders *headers = mGrid.Headers();
    if (headers->Count() <= PropertyGridFiller::ColValue)
        return;
    int others = 0;
    for (int c = 0; c < headers->Count(); ++c) {
        if (c != PropertyGridFiller::ColValue)
            others += mGrid.columnWidthPixels(c);
    }
    const int border = mGrid.BorderStyle() == 1 ? 2 : 0;
    const int bar = mGrid.verticalBar()->isVisibleTo(&mGrid) ? mGrid.verticalBar()->width() : 0;
    // One pixel to spare: twips rounded back to pixels must still fit.
    const int room = std::max(kLeastValuePixels, mGrid.width() - border - bar - others - 1);
    Header *value = headers->at(PropertyGridFiller::ColValue);
    const int twips = Twips::fromPixelsX(room, &mGrid);
    if (value->ColumnWidth == twips)
        return;
    value->ColumnWidth = twips;
    mGrid.RedrawGrid();
}

void PropertyGridController::setInheritedToggle(QAbstractButton &toggle, const EditorSettings &settings)
{
    mInherited = &toggle;
    toggle.setChecked(settings.showInherited());
    connect(&toggle, &QAbstractButton::toggled, this, [this, settings](bool checked) {
        settings.setShowInherited(checked);
        emit rowsWanted();
    });
}

void PropertyGridController::keepColumnWidths(const EditorSettings &settings)
{
    mSettings = settings;
    const QList<int> widths = settings.propertyColumnWidths();
    clsHeaders *headers = mGrid.Headers();
    // Widths kept for another set of columns are not used.
    if (widths.size() == headers->Count()) {
        for (int c = 0; c < widths.size(); ++c)
            headers->at(c)->ColumnWidth = widths.at(c);
        mGrid.RedrawGrid();
    }
    connect(&mGrid, &PowGrid::ColumnResized, this, &PropertyGridController::saveColumnWidths,
            Qt::UniqueConnection);
}

void PropertyGridController::saveColumnWidths()
{
    QList<int> widths;
    for (const Header *header : *mGrid.Headers())
        widths << header->ColumnWidth;
    mSettings->setPropertyColumnWidths(widths);
}

void PropertyGridController::setFilterField(QLineEdit &field)
{
    mFilter = &field;
    connect(&field, &QLineEdit::textChanged, this, &PropertyGridController::applyFilter);
    applyFilter();
}

void PropertyGridController::applyFilter()
{
    const QString text = mFilter ? mFilter->text().trimmed() : QString();
    for (PowGridItem *row : *mGrid.Items()) {
        row->Visible = text.isEmpty()
            || row->CellText(PropertyGridFiller::ColProperty).contains(text, Qt::CaseInsensitive)
            || row->CellText(PropertyGridFiller::ColValue).contains(text, Qt::CaseInsensitive);
    }
    mGrid.RedrawGrid();
}

void PropertyGridController::clear()
{
    mFilledFor.clear();
    mGrid.Items()->Clear();
}

void PropertyGridController::itemChanged(PowGridItem *item, int column)
{
    if (!item)
        return;
    if (column == PropertyGridFiller::ColValue) {
        valueCommitted(item);
        return;
    }
    if (column != PropertyGridFiller::ColButton)
        return;
    switch (PropertyKinds::chooserOf(SkinCodec::wordBytes(item->CellText(PropertyGridFiller::ColProperty)))) {
    case PropertyKinds::Chooser::Colour:
        chooseColour(item);
        break;
    case PropertyKinds::Chooser::Picture:
        chooseImage(item);
        break;
    case PropertyKinds::Chooser::None:
        break;
    }
}

void PropertyGridController::valueCommitted(PowGridItem *item)
{
    const QByteArray key = SkinCodec::wordBytes(item->CellText(PropertyGridFiller::ColNodeKey));
    if (PropertyGridFiller::isInherited(*item)) {
        inheritedValueCommitted(item);
        return;
    }
    const NodeTarget target = mDocument.resolve(key);
    if (target.property.isNull())
        return;
    const QString typed = item->CellText(PropertyGridFiller::ColValue);
    const QByteArray old = target.property.value();
    const SkinCodec &codec = mDocument.document().codec();
    // A flag shows an empty value; leaving it empty keeps the flag. A value
    // shown as it is kept stays as it is, however it is spelled.
    if (typed == codec.toText(old) || (old == clsProperty::noValue() && typed.isEmpty()))
        return;
    const std::optional<QByteArray> value = TypedText::value(mDialogs, typed, codec);
    if (!value) {
        // The cell shows the value kept, not the one refused.
        emit rowsWanted();
        return;
    }
    if (*value == old)
        return;
    // The node the user is on stays the current node.
    const QByteArray shown = mDocument.currentKey().isEmpty() ? key : mDocument.currentKey();
    mDocument.undoStack().push(new SetPropertyValueCommand(mDocument, key, *value, shown));
}

// A value typed over an inherited one becomes the object's own property, added
// and set in one step; the value it inherits is left alone.
void PropertyGridController::inheritedValueCommitted(PowGridItem *item)
{
    const NodeKey propertyKey(SkinCodec::wordBytes(item->CellText(PropertyGridFiller::ColNodeKey)));
    const QByteArray ownerKey = propertyKey.parent().bytes();
    const clsElement *owner = mDocument.elementAt(ownerKey);
    if (!owner)
        return;
    const QByteArray name = SkinCodec::wordBytes(item->CellText(PropertyGridFiller::ColProperty));
    const QString typed = item->CellText(PropertyGridFiller::ColValue);
    const QByteArray inherited = mDocument.document().GetElementValue(name, owner);
    const SkinCodec &codec = mDocument.document().codec();
    if (typed == codec.toText(inherited) || (inherited == clsProperty::noValue() && typed.isEmpty()))
        return;
    const std::optional<QByteArray> value = TypedText::value(mDialogs, typed, codec);
    if (!value) {
        emit rowsWanted();
        return;
    }
    const QByteArray shown = mDocument.currentKey().isEmpty() ? ownerKey : mDocument.currentKey();
    ChangeValueCommand::Options options;
    options.id = UndoCommandId::SetPropertyValue;
    options.addMissing = true;
    auto *command = new ChangeValueCommand(mDocument, ownerKey, { { name, *value } }, shown, options);
    command->setText(QStringLiteral("Set %1").arg(SkinCodec::wordText(name)));
    mDocument.undoStack().push(command);
}

void PropertyGridController::chooseColour(PowGridItem *item)
{
    // A colour is ASCII: anything else presets black, as an unreadable one does.
    const QByteArray value = SkinCodec::wordBytes(item->CellText(PropertyGridFiller::ColValue));
    const std::optional<QColor> chosen = mDialogs.color(ColorValueText::presetFor(value));
    if (!chosen)
        return;
    item->setCellText(PropertyGridFiller::ColValue, SkinCodec::wordText(ColorValueText::valueFor(*chosen)));
    valueCommitted(item);
}

void PropertyGridController::chooseImage(PowGridItem *item)
{
    // The picture name as the cell shows it, in the skin's code page.
    const SkinCodec &codec = mDocument.document().codec();
    const QString cell = item->CellText(PropertyGridFiller::ColValue);
    const std::optional<QByteArray> bytes = codec.toBytes(cell);
    const QString value = bytes ? codec.toText(clsProperty::stringValueOf(*bytes)) : cell;
    QString start = mLookup.GetImageFile(value).path;
    if (start.isEmpty())
        start = mLookup.LocateSkinFile(value, false);
    const QString chosen = mDialogs.openFileName(QStringLiteral("Select Image"), start, kImageFilter);
    if (chosen.isEmpty())
        return;
    item->setCellText(PropertyGridFiller::ColValue, QFileInfo(chosen).fileName());
    valueCommitted(item);
}

bool PropertyGridController::hasFocus() const
{
    return mGrid.hasFocus();
}

QByteArray PropertyGridController::selectedPropertyKey() const
{
    const int row = mGrid.SelRow();
    if (row < 1 || row > mGrid.Items()->Count())
        return {};
    const PowGridItem *item = mGrid.Items()->Item(row);
    if (item->TitleLine || PropertyGridFiller::isInherited(*item))
        return {};
    return SkinCodec::wordBytes(item->CellText(PropertyGridFiller::ColNodeKey));
}
