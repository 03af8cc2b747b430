// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <memory>

// Finds items of a keyed collection by key, ignoring ASCII case, and makes the
// unique key for a new item. Small collections are searched in order; a hash
// table is built only once a collection grows, so the many small property lists
// of a skin cost nothing extra while a skin with thousands of layers stays fast
// to read.
class KeyIndex
{
public:
    // The keys of the collection: its item count and how to read the key of one.
    struct Keys
    {
        const void *owner;
        QByteArrayView (*keyAt)(const void *owner, int index);
        int count;
    };

    // Position (0-based) of the item with this key, or -1.
    int indexOf(QByteArrayView key, const Keys &keys) const;

    // The key a new item gets that wants `wanted`, which is taken:
    // "wanted[0]", "wanted[1]", ... the first one that is free. Counting
    // starts at 0, not 1, so a second "x" is "x[0]".
    QByteArray numberedKey(QByteArrayView wanted, const Keys &keys);
    // Writes the number part "[n]" of a numbered key at `to`, which has room
    // for kLongestNumberSuffix bytes, and returns its length.
    static qsizetype writeNumberSuffix(char *to, unsigned n);
    static constexpr qsizetype kLongestNumberSuffix = 12;

    // When no item has this key: records that the item about to be appended
    // (at position keys.count) has it, and returns true. Otherwise changes
    // nothing and returns false. One look-up does both, for the many items
    // added under a free key.
    bool claimIfFree(QByteArrayView key, const Keys &keys);

    // Call after an item with this key was appended at `index`.
    void appended(QByteArrayView key, int index);
    // Call after any removal, insertion or reordering: positions have moved.
    void invalidate();

    static QByteArray folded(QByteArrayView key);
    static bool sameKey(QByteArrayView a, QByteArrayView b);
    // A hash of the key that ignores ASCII case.
    static size_t foldedHash(QByteArrayView key);

    // Bytes held by the index itself.
    qsizetype memoryUsed() const;

private:
    // Past this many items, hashing the wanted key once beats comparing it with
    // every key in turn.
    static constexpr int kHashThreshold = 4;
    // Past this many items, remembering where numbering stopped beats trying
    // every number from 0 again; below it the hints would take more memory
    // than the items.
    static constexpr int kHintThreshold = 32;

    // Open addressing with linear probing. Each entry keeps the key's hash so
    // that probing compares keys only when the hashes agree.
    struct Entry
    {
        quint32 hash = 0;
        qint32 indexPlusOne = 0; // 0: the entry is free
    };
    void allocateTable(quint32 size) const;
    void buildTable(const Keys &keys) const;
    void insertEntry(quint32 hash, int index) const;
    quint32 probe(QByteArrayView key, quint32 hash, const Keys &keys) const;
    void growTable() const;

    mutable std::unique_ptr<Entry[]> mTable;
    mutable quint32 mTableSize = 0; // a power of two, or 0 before the table is built
    mutable quint32 mUsed = 0;
    // Per folded base key: every "base[n]" below this number is known to be taken,
    // so appending many repeated keys does not try every number from 0 again.
    std::unique_ptr<QHash<QByteArray, int>> mSuffixHints;
};
