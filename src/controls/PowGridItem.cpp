// SPDX-License-Identifier: MIT
#include "PowGridItem.h"

#include "ColumnIndexError.h"
#include "clsPowGridItems.h"

void PowGridItem::checkColumn(int column)
{
    if (column < 0 || column >= MaxColumns)
        throw ColumnIndexError(column);
}

QString PowGridItem::CellText(int Column) const
{
    checkColumn(Column);
    return mCells[size_t(Column)];
}

void PowGridItem::setCellText(int Column, const QString &Text)
{
    checkColumn(Column);
    if (mCells[size_t(Column)] == Text)
        return;
    mCells[size_t(Column)] = Text;
    if (mOwner)
        mOwner->ItemValueChanged(this, Column);
}

void PowGridItem::SetItemColumns(const std::vector<std::optional<QString>> &Values)
{
    for (size_t i = 0; i < Values.size(); ++i)
        if (Values[i])
            setCellText(int(i), *Values[i]);
}

int PowGridItem::Index() const
{
    return mOwner ? mOwner->positionOf(this) : 0;
}
