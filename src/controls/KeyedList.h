// SPDX-License-Identifier: MIT
#pragma once

#include "DuplicateKeyError.h"

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

// The ordered, keyed list behind the grid's collections. It owns its members.
// Positions are 1-based at the surface (find, remove); keys are optional and
// compare without regard to case. A missing position or key finds nothing.
template <class T>
class KeyedList
{
public:
    // Inserts before the 0-based `before` (appends when it is past the end).
    T *insert(int before, std::unique_ptr<T> item, const QString &key)
    {
        const QString folded = key.toCaseFolded();
        if (!key.isEmpty() && mByKey.contains(folded))
            throw DuplicateKeyError(key);
        T *raw = item.get();
        const size_t at = before < 0 || size_t(before) > mItems.size() ? mItems.size() : size_t(before);
        mItems.insert(mItems.begin() + long(at), std::move(item));
        mKeys.insert(mKeys.begin() + long(at), key);
        if (!key.isEmpty())
            mByKey.insert(folded, raw);
        return raw;
    }
    T *append(std::unique_ptr<T> item, const QString &key)
    {
        return insert(count(), std::move(item), key);
    }

    int count() const { return int(mItems.size()); }
    T *at(int index0) const { return mItems[size_t(index0)].get(); }
    T *find(int position) const
    {
        return position >= 1 && position <= count() ? at(position - 1) : nullptr;
    }
    T *find(const QString &key) const
    {
        return key.isEmpty() ? nullptr : mByKey.value(key.toCaseFolded(), nullptr);
    }
    bool contains(const QString &key) const { return find(key) != nullptr; }
    QString keyAt(int index0) const { return mKeys[size_t(index0)]; }

    // The 1-based position of `item`, walking from the first; 0 when absent.
    int positionOf(const T *item) const
    {
        for (int i = 0; i < count(); ++i)
            if (at(i) == item)
                return i + 1;
        return 0;
    }

    std::unique_ptr<T> take(int index0)
    {
        std::unique_ptr<T> item = std::move(mItems[size_t(index0)]);
        if (!mKeys[size_t(index0)].isEmpty())
            mByKey.remove(mKeys[size_t(index0)].toCaseFolded());
        mItems.erase(mItems.begin() + index0);
        mKeys.erase(mKeys.begin() + index0);
        return item;
    }
    // By 1-based position or by key; false when there is no such member.
    bool remove(int position)
    {
        if (!find(position))
            return false;
        take(position - 1);
        return true;
    }
    bool remove(const QString &key)
    {
        const int position = positionOf(find(key));
        return position > 0 && remove(position);
    }
    // Removes from the last member to the first.
    void clear()
    {
        while (!mItems.empty())
            take(count() - 1);
    }

    class const_iterator
    {
    public:
        using Base = typename std::vector<std::unique_ptr<T>>::const_iterator;
        explicit const_iterator(Base it) : mIt(it) { }
        T *operator*() const { return mIt->get(); }
        const_iterator &operator++() { ++mIt; return *this; }
        bool operator!=(const const_iterator &o) const { return mIt != o.mIt; }
        bool operator==(const const_iterator &o) const { return mIt == o.mIt; }

    private:
        Base mIt;
    };
    const_iterator begin() const { return const_iterator(mItems.begin()); }
    const_iterator end() const { return const_iterator(mItems.end()); }

private:
    std::vector<std::unique_ptr<T>> mItems;
    std::vector<QString> mKeys;
    QHash<QString, T *> mByKey;
};
