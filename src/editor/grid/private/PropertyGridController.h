// SPDX-License-Identifier: MIT
#pragma once

#include "EditorSettings.h"

#include <QByteArray>
#include <QObject>

#include <optional>

class Dialogs;
class PowGrid;
class PowGridItem;
class QAbstractButton;
class QLineEdit;
class ResourceLookup;
class SkinDocument;
class clsElement;

// The property grid of the main window: it lists the rows it is given (those
// of the object shown, see ShownNode) and turns a committed value, a chosen
// colour or a chosen picture into a change of the document. Its "Value"
// column stretches to the width the other columns leave.
class PropertyGridController : public QObject
{
    Q_OBJECT

public:
    PropertyGridController(PowGrid &grid, SkinDocument &document, const ResourceLookup &lookup,
                           Dialogs &dialogs, QObject *parent = nullptr);

    // One row per property of `element`, whose node key is `nodeKey`.
    void fill(const clsElement &element, const QByteArray &nodeKey);
    void clear();

    // The columns take the widths kept in the settings, and keep the widths the
    // user drags them to.
    void keepColumnWidths(const EditorSettings &settings);
    // Rows whose name or value holds the field's text (in any case) stay shown.
    void setFilterField(QLineEdit &field);
    // While the button is checked, the values the object inherits are listed
    // below its own properties; unchecked, the grid lists only its own. The
    // button starts as the settings say (checked on a first start) and its
    // state is kept there.
    void setInheritedToggle(QAbstractButton &toggle, const EditorSettings &settings);

    // Whether the grid has the keyboard focus (an open value editor does not
    // count: Delete edits its text).
    bool hasFocus() const;
    // The node key of the object's own property on the grid's selected row;
    // empty when that row holds none (an inherited value, a title, no row).
    QByteArray selectedPropertyKey() const;
    // The node key of the object whose rows the grid lists; empty when none.
    QByteArray shownKey() const { return mFilledFor; }

    // The grid's ItemChanged: column "Value" committed, or the "..." button.
    void itemChanged(PowGridItem *item, int column);

signals:
    // The rows should be filled again: the inherited values were turned on or
    // off, or a refused value must give way to the one kept.
    void rowsWanted();

private:
    void valueCommitted(PowGridItem *item);
    void inheritedValueCommitted(PowGridItem *item);
    void applyFilter();
    void stretchValueColumn();
    void saveColumnWidths();
    void chooseColour(PowGridItem *item);
    void chooseImage(PowGridItem *item);

    PowGrid &mGrid;
    SkinDocument &mDocument;
    const ResourceLookup &mLookup;
    Dialogs &mDialogs;
    QLineEdit *mFilter = nullptr;
    QAbstractButton *mInherited = nullptr;
    std::optional<EditorSettings> mSettings;
    // The node key of the object whose rows the grid lists.
    QByteArray mFilledFor;
};
