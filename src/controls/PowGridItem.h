// SPDX-License-Identifier: MIT
#pragma once

#include "GridDataType.h"

#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

class clsComboList;
class clsPowGridItems;

// One row of the grid: the texts of its columns and how the row is shown.
class PowGridItem
{
public:
    static constexpr int MaxColumns = 50;

    bool TitleLine = false;
    bool Visible = true;
    QString Key;
    // 1-based index of an image in the grid's ImageList; 0 for none.
    int Icon = 0;
    // The row's own choices, for cells of type dtItemCombo.
    std::shared_ptr<clsComboList> ComboList;
    // The row's own data type; dtNone leaves each cell to its column's type.
    int DataType = dtNone;
    // Shown as a tooltip over any cell of the row, before the cell's own text.
    QString ToolTip;
    // The row's texts are drawn grey and italic: values shown for reference,
    // which stand somewhere else.
    bool Dimmed = false;

    // The text of a column, 0 to 49; throws ColumnIndexError for any other.
    QString CellText(int Column) const;
    // Stores a different text and reports the change to the owning collection;
    // an equal text changes nothing and reports nothing.
    void setCellText(int Column, const QString &Text);
    // Sets column i to the i-th value, skipping the omitted ones.
    void SetItemColumns(const std::vector<std::optional<QString>> &Values);

    // The row's 1-based position in its collection (walked, not stored); 0 when
    // the row is in none.
    int Index() const;

private:
    friend class clsPowGridItems;
    static void checkColumn(int column);

    std::array<QString, MaxColumns> mCells;
    clsPowGridItems *mOwner = nullptr;
};
