// SPDX-License-Identifier: MIT
#pragma once

#include "ComboItem.h"
#include "KeyedList.h"

// The choices of a drop-down cell, in order, keyed by the value stored in the
// cell. Shared between the rows and columns that offer it.
class clsComboList
{
public:
    // A choice showing `Text`; `Key` (when not empty) is its key. Throws
    // DuplicateKeyError for a key already in the list.
    ComboItem *Add(const QString &Text, const QString &Key = QString());
    // By 1-based position or by key; nullptr when there is none.
    ComboItem *Item(int Index) const { return mList.find(Index); }
    ComboItem *Item(const QString &Key) const { return mList.find(Key); }
    int Count() const { return mList.count(); }
    bool ItemExist(const QString &Key) const { return mList.contains(Key); }
    // Removing a choice that is not there does nothing.
    void Remove(int Index) { mList.remove(Index); }
    void Remove(const QString &Key) { mList.remove(Key); }
    void Clear() { mList.clear(); }

    // The text of the choice with this key; empty when there is none.
    QString ItemText(const QString &Key) const;
    // The key of the first choice whose ComboListIndex is `ListIndex`; empty
    // when none carries it.
    QString ItemKey(int ListIndex) const;

    auto begin() const { return mList.begin(); }
    auto end() const { return mList.end(); }

private:
    KeyedList<ComboItem> mList;
};
