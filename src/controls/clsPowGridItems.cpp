// SPDX-License-Identifier: MIT
#include "clsPowGridItems.h"

#include "ColumnIndexError.h"
#include "GridNumber.h"
#include "SortOverflowError.h"

#include <cmath>

PowGridItem *clsPowGridItems::adopt(int before, std::unique_ptr<PowGridItem> item,
                                    const QString &Key)
{
    item->Key = Key;
    item->Visible = true;
    PowGridItem *added = mList.insert(before, std::move(item), Key);
    added->mOwner = this;
    emit ItemAdded();
    return added;
}

PowGridItem *clsPowGridItems::Add(bool AtTop, const QString &Key)
{
    const int before = AtTop && Count() > 0 ? 0 : Count();
    return adopt(before, std::make_unique<PowGridItem>(), Key);
}

namespace {

// A row's text as the 16-bit whole number it is compared as, rounded half to
// even as the numeric conversion of the grid does.
double asShortWhole(const QString &text)
{
    const std::optional<double> number = GridNumber::parse(text);
    if (!number)
        return 0;
    const double whole = std::nearbyint(*number);
    if (whole < -32768 || whole > 32767)
        throw SortOverflowError(text);
    return whole;
}

} // namespace

int clsPowGridItems::sortedPosition(int Column, const QVariant &Value) const
{
    const QString text = Value.toString();
    const std::optional<double> number = GridNumber::parse(Value);
    for (int i = 0; i < Count(); ++i) {
        const QString cell = mList.at(i)->CellText(Column);
        const bool greater = number ? *number > asShortWhole(cell) : text > cell;
        if (greater)
            return i;
    }
    return Count();
}

PowGridItem *clsPowGridItems::AddSorted(int Column, const QVariant &Value, const QString &Key)
{
    if (Column < 0 || Column >= PowGridItem::MaxColumns)
        throw ColumnIndexError(Column);
    if (!Key.isEmpty() && ItemExist(Key))
        throw DuplicateKeyError(Key);
    auto item = std::make_unique<PowGridItem>();
    item->setCellText(Column, Value.toString());
    return adopt(sortedPosition(Column, Value), std::move(item), Key);
}

void clsPowGridItems::Remove(int Index)
{
    if (mList.remove(Index))
        emit ItemRemoved();
}

void clsPowGridItems::Remove(const QString &Key)
{
    if (mList.remove(Key))
        emit ItemRemoved();
}

void clsPowGridItems::Clear()
{
    mList.clear();
    emit ItemRemoved();
}

void clsPowGridItems::ItemValueChanged(PowGridItem *Item, int Column)
{
    emit ItemChanged(Item, Column);
}

int clsPowGridItems::CountVisible() const
{
    int visible = 0;
    for (const PowGridItem *item : mList)
        visible += item->Visible ? 1 : 0;
    return visible;
}

int clsPowGridItems::CountVisibleOffset(int VisibleRows) const
{
    if (VisibleRows <= 0)
        return 0;
    int passed = 0;
    int hidden = 0;
    for (const PowGridItem *item : mList) {
        if (item->Visible) {
            if (++passed >= VisibleRows)
                break;
        } else {
            ++hidden;
        }
    }
    return hidden;
}
