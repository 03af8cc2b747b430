// SPDX-License-Identifier: MIT
#include "clsProperties.h"

#include "AsciiCase.h"
#include "ByteCopy.h"
#include "KeyIndex.h"
#include "MissingKeyError.h"
#include "PropertyPack.h"
#include "PropertySlot.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace {

KeyIndex::Keys keysOf(const clsProperties &properties)
{
    auto keyOf = [](const void *owner, int i) {
        return static_cast<const clsProperties *>(owner)->keyAt(i);
    };
    return { &properties, keyOf, properties.Count() };
}

} // namespace

size_t clsProperties::slotSize(bool wide)
{
    return wide ? sizeof(PropertySlot) : sizeof(CompactPropertySlot);
}

size_t clsProperties::slotSize() const
{
    return slotSize(mWideSlots);
}

char *clsProperties::text() const
{
    return mBlock + size_t(mSlotCapacity) * slotSize();
}

clsProperties::Slot clsProperties::slotAt(quint32 index) const
{
    return readSlot(mBlock, mWideSlots, index);
}

void clsProperties::setSlotAt(quint32 index, const Slot &slot)
{
    writeSlot(mBlock, mWideSlots, index, slot);
}

void clsProperties::makeSlotFit(const Slot &slot)
{
    if (!mWideSlots && !CompactPropertySlot::fits(slot))
        widenSlots();
}

clsProperties::Slot clsProperties::readSlot(const char *table, bool wide, quint32 index)
{
    if (wide)
        return reinterpret_cast<const PropertySlot *>(table)[index];
    const CompactPropertySlot &s = reinterpret_cast<const CompactPropertySlot *>(table)[index];
    return { s.offset, s.keyLength, s.valueLength };
}

void clsProperties::writeSlot(char *table, bool wide, quint32 index, const Slot &slot)
{
    if (wide)
        reinterpret_cast<PropertySlot *>(table)[index] = slot;
    else
        reinterpret_cast<CompactPropertySlot *>(table)[index] = { slot.offset, quint16(slot.keyLength), quint16(slot.valueLength) };
}

bool clsProperties::holds(const char *bytes) const
{
    return bytes && mBlock && bytes >= mBlock && bytes < text() + mTextCapacity;
}

clsProperties::clsProperties() = default;

clsProperties::clsProperties(const clsProperties &other)
{
    *this = other;
}

clsProperties &clsProperties::operator=(const clsProperties &other)
{
    if (this != &other) {
        Clear();
        makeRoom(other.mCount, other.mTextSize - other.mUnusedBytes);
        for (int i = 0; i < other.Count(); ++i)
            append(other.keyAt(i), other.valueAt(i));
    }
    return *this;
}

clsProperties::~clsProperties()
{
    if (mOwnsBlock)
        delete[] mBlock;
}

void clsProperties::replaceBlock(char *block, quint32 slotCapacity, quint32 textCapacity)
{
    if (mOwnsBlock)
        delete[] mBlock;
    if (!block)
        mWideSlots = false;
    mBlock = block;
    mOwnsBlock = block != nullptr;
    mSlotCapacity = slotCapacity;
    mTextCapacity = textCapacity;
}

KeyIndex &clsProperties::index() const
{
    if (!mIndex)
        mIndex = std::make_unique<KeyIndex>();
    return *mIndex;
}


void clsProperties::reallocate(quint32 slotCapacity, quint32 textCapacity)
{
    char *block = new char[size_t(slotCapacity) * slotSize() + textCapacity];
    char *newText = block + size_t(slotCapacity) * slotSize();
    if (mCount)
        memcpy(block, mBlock, size_t(mCount) * slotSize());
    if (mTextSize)
        memcpy(newText, text(), mTextSize);
    replaceBlock(block, slotCapacity, textCapacity);
}

// Makes every slot wide, in a block of the same capacities.
void clsProperties::widenSlots()
{
    char *block = new char[size_t(mSlotCapacity) * sizeof(PropertySlot) + mTextCapacity];
    for (quint32 i = 0; i < mCount; ++i)
        writeSlot(block, true, i, slotAt(i));
    if (mTextSize)
        memcpy(block + size_t(mSlotCapacity) * sizeof(PropertySlot), text(), mTextSize);
    replaceBlock(block, mSlotCapacity, mTextCapacity);
    mWideSlots = true;
}

// Grows the block, when needed, so that `moreSlots` slots and `moreText` bytes
// fit. The first growth is exact (a tag line's attributes arrive together);
// later ones grow by half again, so that appending one by one stays cheap.
void clsProperties::makeRoom(quint32 moreSlots, quint32 moreText)
{
    const quint64 slotsNeeded = quint64(mCount) + moreSlots;
    const quint64 textNeeded = quint64(mTextSize) + moreText;
    if (slotsNeeded <= mSlotCapacity && textNeeded <= mTextCapacity)
        return;
    // Offsets are 32-bit: no element holds 4 GB of text.
    if (textNeeded > std::numeric_limits<quint32>::max() || slotsNeeded > std::numeric_limits<int>::max())
        throw std::bad_alloc();
    auto grown = [](quint64 needed, quint32 capacity) {
        if (needed <= capacity)
            return quint64(capacity);
        return std::max(needed, capacity == 0 ? 0 : quint64(capacity) + capacity / 2 + 1);
    };
    const quint64 textCapacity = std::min<quint64>(grown(textNeeded, mTextCapacity),
                                                   std::numeric_limits<quint32>::max());
    reallocate(quint32(grown(slotsNeeded, mSlotCapacity)), quint32(textCapacity));
}

clsProperties::Slot clsProperties::store(QByteArrayView key, QByteArrayView value)
{
    makeRoom(0, quint32(key.size() + value.size()));
    Slot slot { mTextSize, quint32(key.size()), quint32(value.size()) };
    char *at = text() + mTextSize;
    ByteCopy::copySmall(at, key.data(), slot.keyLength);
    ByteCopy::copySmall(at + slot.keyLength, value.data(), slot.valueLength);
    mTextSize += slot.keyLength + slot.valueLength;
    return slot;
}

void clsProperties::append(QByteArrayView key, QByteArrayView value)
{
    mChanged = true;
    if (holds(key.data()) || holds(value.data())) {
        // Growing may move the block these bytes stand in.
        append(QByteArray(key.data(), key.size()), QByteArray(value.data(), value.size()));
        return;
    }
    makeRoom(1, quint32(key.size() + value.size()));
    const Slot slot = store(key, value);
    makeSlotFit(slot);
    setSlotAt(mCount, slot);
    ++mCount;
    if (mIndex)
        mIndex->appended(key, Count() - 1);
}

clsProperty clsProperties::Add(QByteArrayView key, QByteArrayView value)
{
    const QByteArray numbered = indexOf(key) < 0 ? QByteArray() : index().numberedKey(key, keysOf(*this));
    append(numbered.isNull() ? key : QByteArrayView(numbered), value);
    return clsProperty(this, Count() - 1);
}

void clsProperties::AddPacked(const PropertyPack &pack)
{
    const int count = pack.count();
    if (count == 0)
        return;
    // The pack holds its own copies, so no bytes of this collection are among
    // them and growing cannot move them.
    makeRoom(quint32(count), pack.textSize());
    int done = 0;
    if (mCount == 0) {
        // An empty collection takes the leading keys that differ from one
        // another as they are: slots and text are copied whole. It has no key
        // index yet, so there is nothing else to update.
        done = pack.distinctLeadingKeys();
        copyLeadingPacked(pack, done);
    }
    for (int i = done; i < count; ++i)
        Add(pack.keyAt(i), pack.valueAt(i));
}

size_t clsProperties::blockSizeFor(const PropertyPack &pack)
{
    return size_t(pack.count()) * slotSize(!pack.fitsCompactSlots()) + pack.textSize();
}

void clsProperties::adoptPacked(const PropertyPack &pack, char *storage)
{
    Q_ASSERT(mCount == 0 && pack.distinctLeadingKeys() == pack.count());
    replaceBlock(nullptr, 0, 0);
    // Lent, not owned: replaceBlock() left mOwnsBlock false.
    mBlock = storage;
    mWideSlots = !pack.fitsCompactSlots();
    mSlotCapacity = quint32(pack.count());
    mTextCapacity = pack.textSize();
    copyLeadingPacked(pack, pack.count());
    mIndex.reset();
}

// Copies the first `count` properties of the pack, slots and text whole, into
// this empty collection's block, which has room for them.
void clsProperties::copyLeadingPacked(const PropertyPack &pack, int count)
{
    mChanged = true;
    const quint32 textBytes = count == pack.count() ? pack.textSize() : pack.slotTable()[count].offset;
    if (!mWideSlots && !pack.fitsCompactSlots())
        widenSlots();
    // memcpy must not see the null buffers of an empty pack, or of one whose
    // keys and values are all empty.
    if (mWideSlots && count > 0) {
        memcpy(mBlock, pack.slotTable(), size_t(count) * sizeof(Slot));
    } else if (!mWideSlots) {
        for (int i = 0; i < count; ++i)
            setSlotAt(quint32(i), pack.slotTable()[i]);
    }
    if (textBytes > 0)
        memcpy(text(), pack.text(), textBytes);
    mCount = quint32(count);
    // Text left by removed properties is written over.
    mTextSize = textBytes;
    mUnusedBytes = 0;
}

clsProperty clsProperties::Insert(int position, QByteArrayView key, QByteArrayView value)
{
    if (holds(key.data()) || holds(value.data()))
        return Insert(position, QByteArray(key.data(), key.size()), QByteArray(value.data(), value.size()));
    position = qBound(0, position, Count());
    mChanged = true;
    makeRoom(1, quint32(key.size() + value.size()));
    const Slot slot = store(key, value);
    makeSlotFit(slot);
    const size_t size = slotSize();
    memmove(mBlock + size_t(position + 1) * size, mBlock + size_t(position) * size,
            size_t(mCount - quint32(position)) * size);
    setSlotAt(quint32(position), slot);
    ++mCount;
    mIndex.reset();
    return clsProperty(this, position);
}

int clsProperties::indexOf(QByteArrayView key) const
{
    // Most elements have a few properties: compare in place, without the index.
    if (mCount <= 16) {
        const char *t = text();
        for (quint32 i = 0; i < mCount; ++i) {
            const Slot s = slotAt(i);
            if (s.keyLength == quint32(key.size()) && KeyIndex::sameKey(QByteArrayView(t + s.offset, s.keyLength), key))
                return int(i);
        }
        return -1;
    }
    return index().indexOf(key, keysOf(*this));
}

clsProperty clsProperties::Find(QByteArrayView key) const
{
    const int i = indexOf(key);
    return i < 0 ? clsProperty() : clsProperty(this, i);
}

clsProperty clsProperties::Item(QByteArrayView key) const
{
    const int i = indexOf(key);
    if (i < 0)
        throw MissingKeyError(key.toByteArray());
    return clsProperty(this, i);
}

clsProperty clsProperties::Item(int position) const
{
    if (position < 1 || position > Count())
        throw std::out_of_range("No property at position " + std::to_string(position));
    return clsProperty(this, position - 1);
}

QByteArrayView clsProperties::keyAt(int index) const
{
    const Slot s = slotAt(quint32(index));
    return QByteArrayView(text() + s.offset, s.keyLength);
}

QByteArrayView clsProperties::valueAt(int index) const
{
    const Slot s = slotAt(quint32(index));
    return QByteArrayView(text() + s.offset + s.keyLength, s.valueLength);
}

void clsProperties::setValueAt(int index, const QByteArray &value)
{
    mChanged = true;
    Slot s = slotAt(quint32(index));
    if (quint32(value.size()) <= s.valueLength) {
        // Fits where the old value stood.
        if (!value.isEmpty())
            memcpy(text() + s.offset + s.keyLength, value.constData(), size_t(value.size()));
        mUnusedBytes += s.valueLength - quint32(value.size());
        s.valueLength = quint32(value.size());
    } else {
        // The key is copied out first: storing may move the block it stands in.
        const QByteArray key = keyAt(index).toByteArray();
        mUnusedBytes += s.keyLength + s.valueLength;
        s = store(key, value);
        makeSlotFit(s);
    }
    setSlotAt(quint32(index), s);
    compactIfWasteful();
}

void clsProperties::compactIfWasteful()
{
    if (mUnusedBytes < 256 || mUnusedBytes * 2 < mTextSize)
        return;
    const quint32 textCapacity = mTextSize - mUnusedBytes;
    const bool wide = mWideSlots;
    char *block = new char[size_t(mSlotCapacity) * slotSize() + textCapacity];
    char *newText = block + size_t(mSlotCapacity) * slotSize();
    quint32 used = 0;
    for (quint32 i = 0; i < mCount; ++i) {
        Slot s = slotAt(i);
        const quint32 length = s.keyLength + s.valueLength;
        memcpy(newText + used, text() + s.offset, length);
        s.offset = used;
        writeSlot(block, wide, i, s);
        used += length;
    }
    replaceBlock(block, mSlotCapacity, textCapacity);
    mTextSize = used;
    mUnusedBytes = 0;
}

void clsProperties::Remove(QByteArrayView key)
{
    const int i = indexOf(key);
    if (i < 0)
        throw MissingKeyError(key.toByteArray());
    removeAt(i);
}

void clsProperties::Remove(int position)
{
    if (position < 1 || position > Count())
        throw std::out_of_range("No property at position " + std::to_string(position));
    mChanged = true;
    const quint32 at = quint32(position - 1);
    const Slot removed = slotAt(at);
    mUnusedBytes += removed.keyLength + removed.valueLength;
    const size_t size = slotSize();
    memmove(mBlock + at * size, mBlock + (at + 1) * size, size_t(mCount - at - 1) * size);
    --mCount;
    mIndex.reset();
    compactIfWasteful();
}

void clsProperties::Clear()
{
    mChanged = true;
    replaceBlock(nullptr, 0, 0);
    mCount = mTextSize = mUnusedBytes = 0;
    mIndex.reset();
}

qsizetype clsProperties::memoryUsed() const
{
    return qsizetype(sizeof(*this) + size_t(mSlotCapacity) * slotSize() + mTextCapacity)
        + (mIndex ? qsizetype(sizeof(KeyIndex)) + mIndex->memoryUsed() : 0);
}
