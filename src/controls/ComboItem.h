// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// One choice of a drop-down cell: the key stored in the cell and the text shown.
class ComboItem
{
public:
    QString Key;
    // The line of this choice in the drop-down editor when the list was last
    // loaded into it; -1 before that.
    int ComboListIndex = -1;
    QString strText;
};
