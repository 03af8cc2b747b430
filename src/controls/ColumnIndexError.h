// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

// A row holds the texts of columns 0 to 49 only: the grid has no more than 50
// columns by design, and asking for any other column is this error.
class ColumnIndexError : public std::out_of_range
{
public:
    explicit ColumnIndexError(int column)
        : std::out_of_range("Column " + std::to_string(column)
                            + " is out of range: a row has the columns 0 to 49")
        , mColumn(column)
    {
    }
    int column() const { return mColumn; }

private:
    int mColumn;
};
