// SPDX-License-Identifier: MIT
#include "PropertyPack.h"

#include "ByteCopy.h"
#include "KeyIndex.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

void PropertyPack::add(QByteArrayView key, QByteArrayView value)
{
    char *at = reserve(size_t(key.size()) + size_t(value.size()));
    ByteCopy::copySmall(at, key.data(), quint32(key.size()));
    ByteCopy::copySmall(at + key.size(), value.data(), quint32(value.size()));
    commit(quint32(key.size()), quint32(value.size()));
}

void PropertyPack::grow(size_t textNeeded)
{
    // Offsets are 32-bit, as in the collections the pack is stored into.
    if (textNeeded > std::numeric_limits<quint32>::max() || mSlotCapacity >= quint32(std::numeric_limits<int>::max() / 2))
        throw std::bad_alloc();
    if (mCount == mSlotCapacity) {
        const quint32 capacity = std::max<quint32>(mSlotCapacity * 2, 32);
        std::unique_ptr<PropertySlot[]> table(new PropertySlot[capacity]);
        if (mCount)
            memcpy(table.get(), mSlots.get(), mCount * sizeof(PropertySlot));
        mSlots = std::move(table);
        mSlotCapacity = capacity;
    }
    if (textNeeded > mTextCapacity) {
        const size_t capacity = std::max<size_t>({ textNeeded, mTextCapacity * 2, 256 });
        std::unique_ptr<char[]> text(new char[capacity]);
        // Reserved bytes not yet committed are kept too.
        if (mTextCapacity)
            memcpy(text.get(), mText.get(), mTextCapacity);
        mText = std::move(text);
        mTextCapacity = capacity;
    }
}

QByteArrayView PropertyPack::keyAt(int index) const
{
    const PropertySlot &s = mSlots[index];
    return QByteArrayView(mText.get() + s.offset, s.keyLength);
}

QByteArrayView PropertyPack::valueAt(int index) const
{
    const PropertySlot &s = mSlots[index];
    return QByteArrayView(mText.get() + s.offset + s.keyLength, s.valueLength);
}

bool PropertyPack::repeatsEarlierKey(quint32 print, const char *key, quint32 length) const
{
    for (quint32 j = 0; j < mDistinctKeys; ++j) {
        if (mPrints[j] == print && KeyIndex::sameKey(keyAt(int(j)), QByteArrayView(key, length)))
            return true;
    }
    return false;
}

bool PropertyPack::numberRepeatedKeys(PropertyPack &room)
{
    if (mDistinctKeys == mCount)
        return true;
    if (mCount > kMostChecked)
        return false;
    room.clear();
    for (int i = 0; i < count(); ++i) {
        const QByteArrayView key = keyAt(i);
        if (room.holdsKey(key.data(), quint32(key.size())))
            room.addNumbered(key, valueAt(i));
        else
            room.add(key, valueAt(i));
    }
    swap(room);
    return true;
}

// Adds `key` as "key[n]" with the lowest n not yet taken; counting starts at 0.
void PropertyPack::addNumbered(QByteArrayView key, QByteArrayView value)
{
    const quint32 keyLength = quint32(key.size());
    char *out = reserve(size_t(keyLength) + KeyIndex::kLongestNumberSuffix + size_t(value.size()));
    ByteCopy::copySmall(out, key.data(), keyLength);
    quint32 numberedLength = 0;
    for (unsigned n = 0;; ++n) {
        numberedLength = keyLength + quint32(KeyIndex::writeNumberSuffix(out + keyLength, n));
        if (!holdsKey(out, numberedLength))
            break;
    }
    ByteCopy::copySmall(out + numberedLength, value.data(), quint32(value.size()));
    commit(numberedLength, quint32(value.size()));
}

void PropertyPack::swap(PropertyPack &other) noexcept
{
    std::swap(mSlots, other.mSlots);
    std::swap(mText, other.mText);
    std::swap(mCount, other.mCount);
    std::swap(mSlotCapacity, other.mSlotCapacity);
    std::swap(mTextCapacity, other.mTextCapacity);
    std::swap(mTextSize, other.mTextSize);
    std::swap(mDistinctKeys, other.mDistinctKeys);
    std::swap(mPrintBits, other.mPrintBits);
    std::swap(mLengthBits, other.mLengthBits);
    std::swap(mPrints, other.mPrints);
}
