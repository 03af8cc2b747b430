#include "PropertyGridController.h"

#include "ChangeValueCommand.h"
#include "ColorValueText.h"
#include "Dialogs.h"
#include "NodeKey.h"
#include "PowGrid.h"
#include "PowGridItem.h"
#include "PropertyGridFiller.h"
#include "PropertyKinds.h"
#include "ResourceLookup.h"
#include "ShownSelection.h"
#include "SkinDocument.h"
#include "TypedText.h"
#include "clsKorviInterface.h"

#include <QFileInfo>
#include <QUndoStack>

namespace {

const QString kImageFilter = QStringLiteral("Korvi Image Files (*.bmp;*.spr)|*.bmp;*.spr|All Files|*.*");

} // namespace

PropertyGridController::PropertyGridController(PowGrid &grid, SkinDocument &document,
                                               const ResourceLookup &lookup, Dialogs &dialogs,
                                               ShownSelection &selection, QObject *parent)
    : QObject(parent)
    , mGrid(grid)
    , mDocument(document)
    , mLookup(lookup)
    , mDialogs(dialogs)
    , mSelection(selection)
{
    setObjectName(QStringLiteral("PropertyGridController"));
    PropertyGridFiller::setUpColumns(grid);
    connect(&grid, &PowGrid::ItemChanged, this, &PropertyGridController::itemChanged);
    const auto changed = [this](const QByteArray &ownerKey) { propertiesChanged(ownerKey); };
    connect(&document, &SkinDocument::propertyChanged, this, changed);
    connect(&document, &SkinDocument::propertyAdded, this, changed);
    connect(&document, &SkinDocument::propertyRemoved, this, changed);
    connect(&document, &SkinDocument::changed, this, &PropertyGridController::refillIfStale);
}

void PropertyGridController::fill(const clsElement &element, const QByteArray &nodeKey)
{
    PropertyGridFiller::fill(mGrid, element, nodeKey, mDocument.document());
}

void PropertyGridController::clear()
{
    mGrid.Items()->Clear();
}

void PropertyGridController::propertiesChanged(const QByteArray &ownerKey)
{
    const clsElement *current = mSelection.currentObject();
    if (current && mDocument.elementAt(ownerKey) == current)
        mStale = true;
}

// Once the change is whole: a move sets "x" and "y" and fills the grid once.
void PropertyGridController::refillIfStale()
{
    const clsElement *current = mSelection.currentObject();
    if (mStale && current)
        fill(*current, mSelection.currentNodeKey());
    mStale = false;
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
    switch (PropertyKinds::chooserOf(item->CellText(PropertyGridFiller::ColProperty).toLatin1())) {
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
    const QByteArray key = item->CellText(PropertyGridFiller::ColNodeKey).toLatin1();
    const NodeTarget target = mDocument.resolve(key);
    if (target.property.isNull())
        return;
    const QString typed = item->CellText(PropertyGridFiller::ColValue);
    const QByteArray old = target.property.value();
    // A flag shows an empty value; leaving it empty keeps the flag.
    if (typed.toLatin1() == old || (old == clsProperty::noValue() && typed.isEmpty()))
        return;
    const std::optional<QByteArray> value = TypedText::value(mDialogs, typed);
    if (!value) {
        // The cell shows the value kept, not the one refused.
        if (const clsElement *current = mSelection.currentObject())
            fill(*current, mSelection.currentNodeKey());
        return;
    }
    if (*value == old)
        return;
    // The grid shows the property's owner; that stays the node shown.
    const QByteArray shown = mSelection.currentNodeKey().isEmpty() ? key : mSelection.currentNodeKey();
    mDocument.undoStack().push(new SetPropertyValueCommand(mDocument, key, *value, shown));
}

void PropertyGridController::chooseColour(PowGridItem *item)
{
    const QByteArray value = item->CellText(PropertyGridFiller::ColValue).toLatin1();
    const std::optional<QColor> chosen = mDialogs.color(ColorValueText::presetFor(value));
    if (!chosen)
        return;
    item->setCellText(PropertyGridFiller::ColValue, QString::fromLatin1(ColorValueText::valueFor(*chosen)));
    valueCommitted(item);
}

void PropertyGridController::chooseImage(PowGridItem *item)
{
    const QByteArray value = clsProperty::stringValueOf(item->CellText(PropertyGridFiller::ColValue).toLatin1());
    QString start = mLookup.GetImageFile(value).path;
    if (start.isEmpty())
        start = mLookup.LocateSkinFile(QString::fromLatin1(value), false);
    const QString chosen = mDialogs.openFileName(QStringLiteral("Select Image"), start, kImageFilter);
    if (chosen.isEmpty())
        return;
    item->setCellText(PropertyGridFiller::ColValue, QFileInfo(chosen).fileName());
    valueCommitted(item);
}
