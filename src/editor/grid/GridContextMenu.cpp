// SPDX-License-Identifier: MIT
#include "GridContextMenu.h"

#include "InheritedValues.h"
#include "PowGrid.h"
#include "PowGridItem.h"
#include "PropertyCommands.h"
#include "PropertyGridController.h"
#include "PropertyGridFiller.h"
#include "SkinCodec.h"
#include "SkinDocument.h"
#include "clsKorviInterface.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QUndoStack>

#include <memory>

GridContextMenu::GridContextMenu(PowGrid &grid, const PropertyGridController &rows, SkinDocument &document,
                                 QObject *parent)
    : QObject(parent)
    , mGrid(grid)
    , mRows(rows)
    , mDocument(document)
{
    setObjectName(QStringLiteral("GridContextMenu"));
    popUpMenu = [](QMenu &menu, QPoint globalPoint) { return menu.exec(globalPoint); };
    grid.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&grid, &QWidget::customContextMenuRequested, this, &GridContextMenu::requested);
}

void GridContextMenu::requested(QPoint at)
{
    if (mRows.shownKey().isEmpty())
        return;
    const int row = mGrid.rowAt(at);
    if (row > 0)
        mGrid.setSelRow(row);
    const bool own = !mRows.selectedPropertyKey().isEmpty();
    const PowGridItem *selected = mGrid.SelectedItem();
    QMenu menu(&mGrid);
    const auto add = [&menu](const char *name, const QString &text, bool enabled) {
        QAction *action = menu.addAction(text);
        action->setObjectName(QString::fromLatin1(name));
        action->setEnabled(enabled);
        return action;
    };
    const QByteArray owner = mRows.shownKey();
    connect(add("mnuGridAddProperty", QStringLiteral("Add Property..."), true), &QAction::triggered, this,
            [this, owner] { emit addPropertyWanted(owner); });
    connect(add("mnuGridRemoveProperty", QStringLiteral("Remove Property"), own), &QAction::triggered, this,
            &GridContextMenu::removeProperty);
    menu.addSeparator();
    connect(add("mnuGridCopyValue", QStringLiteral("Copy Value"), selected && !selected->TitleLine),
            &QAction::triggered, this, &GridContextMenu::copyValue);
    connect(add("mnuGridResetToInherited", QStringLiteral("Reset to Inherited"), own && inheritsValueOfSelectedRow()),
            &QAction::triggered, this, &GridContextMenu::removeProperty);
    popUpMenu(menu, mGrid.mapToGlobal(at));
}

// Removing the object's own property is also what gives the inherited value back.
void GridContextMenu::removeProperty()
{
    const QByteArray key = mRows.selectedPropertyKey();
    if (key.isEmpty())
        return;
    auto command = std::make_unique<RemovePropertyCommand>(mDocument, key);
    if (command->isValid())
        mDocument.undoStack().push(command.release());
}

void GridContextMenu::copyValue()
{
    if (const PowGridItem *selected = mGrid.SelectedItem())
        QGuiApplication::clipboard()->setText(selected->CellText(PropertyGridFiller::ColValue));
}

bool GridContextMenu::inheritsValueOfSelectedRow() const
{
    const PowGridItem *selected = mGrid.SelectedItem();
    const clsElement *element = mDocument.elementAt(mRows.shownKey());
    if (!selected || !element)
        return false;
    return InheritedValues::givenFor(mDocument.document(), *element,
                                     SkinCodec::wordBytes(selected->CellText(PropertyGridFiller::ColProperty)));
}
