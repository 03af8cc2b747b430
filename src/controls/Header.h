// SPDX-License-Identifier: MIT
#pragma once

#include "GridDataType.h"

#include <QString>

#include <limits>
#include <memory>

class clsComboList;
class clsHeaders;

// One column of the grid.
class Header
{
public:
    explicit Header(const clsHeaders *owner = nullptr) : mOwner(owner) { }

    // 1-based index of an image in the grid's ImageListHeader; 0 for none.
    int Icon = 0;
    // The number editor keeps its value within these. A new column allows the
    // range of a 32-bit whole number.
    double NumericMin = std::numeric_limits<qint32>::min();
    double NumericMax = std::numeric_limits<qint32>::max();
    int CheckStyle = checkTick;
    std::shared_ptr<clsComboList> ComboList;
    // The column's 1-based position, found by walking its collection; 0 when
    // the column is in none.
    int Index() const;
    // Every column may be edited unless the application says otherwise.
    bool ColumnEditable = true;
    int Alignment = alignLeft;
    int ColumnDataType = dtText;
    bool Visible = true;
    // In twips.
    int ColumnWidth = 0;
    QString Caption;
    // In a button column, a cell without text shows no button and ignores
    // clicks: only the rows that have something to choose get one.
    bool HideEmptyButtons = false;

private:
    friend class clsHeaders;
    const clsHeaders *mOwner;
};
