#include "PropertyPack.h"

#include "ByteCopy.h"

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

void PropertyPack::grow(size_t needed)
{
    // Offsets are 32-bit, as in the collections the pack is stored into.
    if (needed > std::numeric_limits<quint32>::max())
        throw std::bad_alloc();
    const size_t capacity = std::max<size_t>({ needed, mCapacity * 2, 256 });
    std::unique_ptr<char[]> text(new char[capacity]);
    // Reserved bytes not yet committed are kept too.
    if (mCapacity)
        memcpy(text.get(), mText.get(), mCapacity);
    mText = std::move(text);
    mCapacity = capacity;
}

QByteArrayView PropertyPack::keyAt(int index) const
{
    const PropertySlot &s = mSlots[size_t(index)];
    return QByteArrayView(mText.get() + s.offset, s.keyLength);
}

QByteArrayView PropertyPack::valueAt(int index) const
{
    const PropertySlot &s = mSlots[size_t(index)];
    return QByteArrayView(mText.get() + s.offset + s.keyLength, s.valueLength);
}
