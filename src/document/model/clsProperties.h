// SPDX-License-Identifier: MIT
#pragma once

#include "clsProperty.h"

#include <QByteArray>
#include <memory>

class KeyIndex;
class PropertyPack;
struct PropertySlot;

// The ordered, keyed list of an element's properties (attributes or script lines).
//
// Keys and values are kept as bytes exactly as given. A repeated key K is stored
// as "K[0]", "K[1]", ...; keys compare without regard to ASCII case. All text of
// one collection lives in one buffer, with a small table of slices into it.
class clsProperties
{
public:
    clsProperties();
    clsProperties(const clsProperties &other);
    clsProperties &operator=(const clsProperties &other);
    ~clsProperties();

    // Appends a property under the unique key made from `key`.
    clsProperty Add(QByteArrayView key, QByteArrayView value);
    // Appends the properties of a pack in order, each under the key Add would
    // give it; the storage grows once for all of them.
    void AddPacked(const PropertyPack &pack);
    // Inserts a property with exactly this key (which must be free) at a 0-based
    // position; used to put a removed property back where it was.
    clsProperty Insert(int position, QByteArrayView key, QByteArrayView value);

    // By key; throws MissingKeyError when there is none.
    clsProperty Item(QByteArrayView key) const;
    // By 1-based position, as the skin's own names count; throws
    // std::out_of_range when there is none. The program itself uses at().
    clsProperty Item(int position) const;
    // By key; a null handle when there is none.
    clsProperty Find(QByteArrayView key) const;
    int Count() const { return int(mCount); }
    bool isEmpty() const { return mCount == 0; }
    bool ItemExist(QByteArrayView key) const { return indexOf(key) >= 0; }
    bool PropertyExist(QByteArrayView key) const { return ItemExist(key); }
    void Remove(QByteArrayView key);
    // By 1-based position, as Item(int); the program itself uses removeAt().
    void Remove(int position);
    void Clear();

    // ---- 0-based positions, for the program's own code ----
    int indexOf(QByteArrayView key) const;
    // Throws std::out_of_range when there is none.
    clsProperty at(int index) const { return Item(index + 1); }
    void removeAt(int index) { Remove(index + 1); }
    QByteArrayView keyAt(int index) const;
    QByteArrayView valueAt(int index) const;
    void setValueAt(int index, const QByteArray &value);
    // By key; throws MissingKeyError when there is none.
    void setValue(QByteArrayView key, const QByteArray &value) { setValueAt(Item(key).position(), value); }

    // Whether a property was added, removed or given a value since
    // markUnchanged(). The list of an element read from a file that has not
    // changed still says what the file says, so saving passes it by.
    bool hasChanged() const { return mChanged; }
    void markUnchanged() { mChanged = false; }

    // Bytes held by this collection, for measuring the document's size.
    qsizetype memoryUsed() const;

    // The bytes a block holding exactly the properties of `pack` takes.
    static size_t blockSizeFor(const PropertyPack &pack);
    // Takes every property of `pack`, whose keys differ from one another, into
    // `storage` (of blockSizeFor(pack) bytes), which the caller owns and keeps
    // alive as long as this collection. The collection must be empty; it moves
    // to a block of its own when it grows.
    void adoptPacked(const PropertyPack &pack, char *storage);
    // Whether the properties still live in storage given to adoptPacked().
    bool usesLentStorage() const { return mBlock && !mOwnsBlock; }

    class const_iterator
    {
    public:
        const_iterator(const clsProperties *owner, int index) : mOwner(owner), mIndex(index) { }
        clsProperty operator*() const { return clsProperty(mOwner, mIndex); }
        const_iterator &operator++() { ++mIndex; return *this; }
        bool operator!=(const const_iterator &o) const { return mIndex != o.mIndex; }
        bool operator==(const const_iterator &o) const { return mIndex == o.mIndex; }

    private:
        const clsProperties *mOwner;
        int mIndex;
    };
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, Count()); }

private:
    // Key and value stand one after the other in the text.
    using Slot = PropertySlot;

    // The slot table and the text share one heap block: the slots first, then
    // the text. A large skin has millions of properties in a few hundred
    // thousand elements, so one allocation per element matters. The slots are
    // compact until a key or a value of 64 KB or more comes; then all of them
    // become wide.
    static size_t slotSize(bool wide);
    size_t slotSize() const;
    char *text() const;
    Slot slotAt(quint32 index) const;
    // The slot must fit the table's size of slot: see makeSlotFit().
    void setSlotAt(quint32 index, const Slot &slot);
    void makeSlotFit(const Slot &slot);
    void widenSlots();
    static Slot readSlot(const char *table, bool wide, quint32 index);
    static void writeSlot(char *table, bool wide, quint32 index, const Slot &slot);
    bool holds(const char *bytes) const;
    void makeRoom(quint32 moreSlots, quint32 moreText);
    void reallocate(quint32 slotCapacity, quint32 textCapacity);
    Slot store(QByteArrayView key, QByteArrayView value);
    void append(QByteArrayView key, QByteArrayView value);
    void compactIfWasteful();

    void replaceBlock(char *block, quint32 slotCapacity, quint32 textCapacity);
    void copyLeadingPacked(const PropertyPack &pack, int count);

    // The block is this collection's own, or lent by the element it belongs
    // to: an element read from a file holds its first properties in the same
    // allocation as itself.
    char *mBlock = nullptr;
    bool mOwnsBlock = false;
    bool mWideSlots = false;
    // Shares the padding after the flags.
    bool mChanged = false;
    quint32 mCount = 0;
    quint32 mSlotCapacity = 0;
    quint32 mTextSize = 0;
    quint32 mTextCapacity = 0;
    quint32 mUnusedBytes = 0;
    // Made when first needed: most collections stay small and are searched
    // in order, and a large skin has hundreds of thousands of them.
    KeyIndex &index() const;
    mutable std::unique_ptr<KeyIndex> mIndex;
};
