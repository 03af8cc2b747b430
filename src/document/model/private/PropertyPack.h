// SPDX-License-Identifier: MIT
#pragma once

#include "PropertySlot.h"

#include <QByteArrayView>
#include <memory>

// Properties gathered for one element before they are stored, laid out the way
// a property collection stores them: keys and values one after the other in one
// text buffer, and a slot for each. A collection takes a whole pack with two
// copies, so the reader gathers a tag line's attributes here and stores them
// at once.
class PropertyPack
{
public:
    void clear()
    {
        mCount = 0;
        mTextSize = 0;
        mDistinctKeys = 0;
        mPrintBits = 0;
        mLengthBits = 0;
    }

    // Copies a key and its value in as they are.
    void add(QByteArrayView key, QByteArrayView value);

    // For a writer that fills the text in place: makes room for one more
    // property of up to `more` bytes after the text and returns where they
    // begin. Bytes written there become part of the pack only through
    // commit(); until then a later reserve() keeps them, wherever it moves the
    // text.
    char *reserve(size_t more)
    {
        if (mTextSize + more > mTextCapacity || mCount == mSlotCapacity)
            grow(mTextSize + more);
        return mText.get() + mTextSize;
    }
    // The key and the value just written at the end of the text are one more
    // property.
    void commit(quint32 keyLength, quint32 valueLength)
    {
        const quint32 at = mTextSize;
        if (mDistinctKeys == mCount && mCount < kMostChecked)
            noteKey(mText.get() + at, keyLength);
        mSlots[mCount++] = { at, keyLength, valueLength };
        mLengthBits |= keyLength | valueLength;
        mTextSize = at + keyLength + valueLength;
    }

    // How many keys at the start differ from every key before them, ignoring
    // case. A collection that takes the pack numbers keys only from the first
    // repeat on. Only the first few keys are checked.
    int distinctLeadingKeys() const { return int(mDistinctKeys); }
    static constexpr quint32 kMostChecked = 32;

    // Gives repeated keys the numbers a property collection gives them when
    // they are added one by one to an empty collection ("x", "X[0]", "x[1]"),
    // so that the pack can be stored whole. Only packs of at most
    // kMostChecked properties are numbered: returns false, leaving the pack
    // as it was, for a larger one with a repeat. `room` is working space; it
    // ends up holding the pack as it was.
    bool numberRepeatedKeys(PropertyPack &room);
    void swap(PropertyPack &other) noexcept;

    // Whether every key and value is short enough for compact slots.
    bool fitsCompactSlots() const { return CompactPropertySlot::fitsLengths(mLengthBits); }

    int count() const { return int(mCount); }
    bool isEmpty() const { return mCount == 0; }
    const PropertySlot *slotTable() const { return mSlots.get(); }
    const char *text() const { return mText.get(); }
    quint32 textSize() const { return mTextSize; }
    QByteArrayView keyAt(int index) const;
    QByteArrayView valueAt(int index) const;

private:
    void grow(size_t textNeeded);
    // Tells most keys apart without comparing them: their length and their
    // first, middle and last bytes, with the case bit set so that letters
    // fold. The middle byte parts "fontsize" from "fonttype".
    static quint32 keyPrint(const char *key, quint32 length)
    {
        if (length == 0)
            return 0;
        return length << 24 | quint32(quint8(key[0]) | 0x20) << 16 | quint32(quint8(key[length / 2]) | 0x20) << 8
            | (quint8(key[length - 1]) | 0x20);
    }
    void noteKey(const char *key, quint32 length)
    {
        const quint32 print = keyPrint(key, length);
        // One bit per print seen: most keys find their bit clear and need no
        // comparing at all.
        const quint64 bit = printBit(print);
        if ((mPrintBits & bit) && repeatsEarlierKey(print, key, length))
            return;
        mPrintBits |= bit;
        mPrints[mDistinctKeys++] = print;
    }
    bool repeatsEarlierKey(quint32 print, const char *key, quint32 length) const;
    // Whether a key of this pack, all of whose keys differ, equals `key`
    // ignoring case; only for packs of at most kMostChecked properties.
    bool holdsKey(const char *key, quint32 length) const
    {
        const quint32 print = keyPrint(key, length);
        return (mPrintBits & printBit(print)) && repeatsEarlierKey(print, key, length);
    }
    static quint64 printBit(quint32 print) { return quint64(1) << ((print * 0x9e3779b1u) >> 26); }
    void addNumbered(QByteArrayView key, QByteArrayView value);

    std::unique_ptr<PropertySlot[]> mSlots;
    std::unique_ptr<char[]> mText;
    quint32 mCount = 0;
    quint32 mSlotCapacity = 0;
    size_t mTextCapacity = 0;
    quint32 mTextSize = 0;
    quint32 mDistinctKeys = 0;
    quint64 mPrintBits = 0;
    // All key and value lengths or-ed together.
    quint32 mLengthBits = 0;
    quint32 mPrints[kMostChecked];
};
