// SPDX-License-Identifier: MIT
#pragma once

#include "Header.h"
#include "KeyedList.h"

#include <QObject>

// The columns of the grid, in order, optionally keyed.
class clsHeaders : public QObject
{
    Q_OBJECT

public:
    explicit clsHeaders(QObject *parent = nullptr) : QObject(parent) { }

    // A new column at the end, with the default numeric range. Throws
    // DuplicateKeyError for a key already in use.
    Header *Add(const QString &Caption, int ColumnWidth, bool Visible, int ColumnDataType,
                const QString &Key = QString());
    // By 1-based position or by key; nullptr when there is none.
    Header *Item(int Index) const { return mList.find(Index); }
    Header *Item(const QString &Key) const { return mList.find(Key); }
    int Count() const { return mList.count(); }
    bool ItemExist(const QString &Key) const { return mList.contains(Key); }
    // Removing a column that is not there does nothing.
    void Remove(int Index) { mList.remove(Index); }
    void Remove(const QString &Key) { mList.remove(Key); }
    void Clear() { mList.clear(); }

    // ---- 0-based positions, for the program's own code ----
    Header *at(int index) const { return mList.find(index + 1); }
    int positionOf(const Header *header) const { return mList.positionOf(header); }

    auto begin() const { return mList.begin(); }
    auto end() const { return mList.end(); }

signals:
    void ItemAdded();

private:
    KeyedList<Header> mList;
};
