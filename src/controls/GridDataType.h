// SPDX-License-Identifier: MIT
#pragma once

// How a cell is shown and edited. A column has one (`ColumnDataType`); a row may
// have its own (`DataType`), 0 meaning "the column's". Any other value draws as
// plain text.
enum GridDataType : int {
    dtNone = 0,
    dtText = 1,
    dtPassword = 2,
    dtCheck = 3,
    dtDate = 4,
    dtTime = 5,
    dtCombo = 6,
    dtNumber = 7,
    dtDecimal = 8,
    dtButton = 9,
    dtProgress = 10,
    dtItemCombo = 11,
};

// Horizontal alignment of a column's texts.
enum GridAlignment : int { alignLeft = 0, alignRight = 1, alignCenter = 2 };

// The look of a check column's boxes.
enum GridCheckStyle : int { checkTick = 0, checkCross = 1 };
