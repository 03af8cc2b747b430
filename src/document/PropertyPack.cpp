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
