// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QPoint>

#include <functional>

class PowGrid;
class PropertyGridController;
class QAction;
class QMenu;
class SkinDocument;

// The property grid's context menu, on the row under the mouse (which it
// selects): Add Property, Remove Property (the object's own property on the
// row), Copy Value (the row's value as text) and Reset to Inherited (the own
// property goes, so that the value its templates or font types give is used
// again). Each change is one undoable step.
class GridContextMenu : public QObject
{
    Q_OBJECT

public:
    GridContextMenu(PowGrid &grid, const PropertyGridController &rows, SkinDocument &document,
                    QObject *parent = nullptr);

    // Shows the menu and returns the entry chosen; tests choose without a menu on the screen.
    std::function<QAction *(QMenu &menu, QPoint globalPoint)> popUpMenu;

signals:
    // A new property is wanted for the object whose node key is given.
    void addPropertyWanted(const QByteArray &ownerNodeKey);

private:
    void requested(QPoint at);
    void removeProperty();
    void copyValue();
    bool inheritsValueOfSelectedRow() const;

    PowGrid &mGrid;
    const PropertyGridController &mRows;
    SkinDocument &mDocument;
};
