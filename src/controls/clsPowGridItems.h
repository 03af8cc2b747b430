// SPDX-License-Identifier: MIT
#pragma once

#include "KeyedList.h"
#include "PowGridItem.h"

#include <QObject>
#include <QVariant>

// The rows of the grid, in order, optionally keyed. Reports additions, changes
// of cell texts and removals to the grid.
class clsPowGridItems : public QObject
{
    Q_OBJECT

public:
    explicit clsPowGridItems(QObject *parent = nullptr) : QObject(parent) { }

    // A new visible row: before the first row when AtTop is set and there is a
    // row already, else at the end. Throws DuplicateKeyError for a key in use.
    PowGridItem *Add(bool AtTop = false, const QString &Key = QString());
    // A new row whose `Column` holds `Value`, before the first row whose text in
    // that column `Value` is greater than; so rows added this way stand in
    // descending order. A numeric value is compared with the row texts taken as
    // 16-bit whole numbers (SortOverflowError beyond that range; a text that is
    // not a number counts as 0); any other value is compared as text.
    PowGridItem *AddSorted(int Column, const QVariant &Value, const QString &Key = QString());
    // By 1-based position or by key; nullptr when there is none.
    PowGridItem *Item(int Index) const { return mList.find(Index); }
    PowGridItem *Item(const QString &Key) const { return mList.find(Key); }
    int Count() const { return mList.count(); }
    bool ItemExist(const QString &Key) const { return mList.contains(Key); }
    // Removing a row that is not there does nothing; a removal raises ItemRemoved.
    void Remove(int Index);
    void Remove(const QString &Key);
    // Removes every row, last first, then raises ItemRemoved once.
    void Clear();

    // Called by a row whose text has changed.
    void ItemValueChanged(PowGridItem *Item, int Column);

    int CountVisible() const;
    // How many hidden rows lie before the VisibleRows-th visible row: the
    // collection position of the n-th visible row is n + CountVisibleOffset(n).
    int CountVisibleOffset(int VisibleRows) const;

    int positionOf(const PowGridItem *item) const { return mList.positionOf(item); }

    auto begin() const { return mList.begin(); }
    auto end() const { return mList.end(); }

signals:
    void ItemAdded();
    void ItemChanged(PowGridItem *Item, int Column);
    void ItemRemoved();

private:
    PowGridItem *adopt(int before, std::unique_ptr<PowGridItem> item, const QString &Key);
    int sortedPosition(int Column, const QVariant &Value) const;

    KeyedList<PowGridItem> mList;
};
