#include "clsProperties.h"

#include "MissingKeyError.h"

#include <cstring>
#include <stdexcept>

clsProperties::clsProperties(const clsProperties &other)
{
    *this = other;
}

clsProperties &clsProperties::operator=(const clsProperties &other)
{
    if (this != &other) {
        Clear();
        for (int i = 0; i < other.Count(); ++i)
            append(other.keyAt(i), other.valueAt(i));
    }
    return *this;
}

KeyIndex::Keys clsProperties::keys() const
{
    auto keyOf = [](const void *owner, int i) {
        return static_cast<const clsProperties *>(owner)->keyAt(i);
    };
    return { this, keyOf, Count() };
}

clsProperties::Slot clsProperties::store(QByteArrayView key, QByteArrayView value)
{
    Slot slot { quint32(mText.size()), quint32(key.size()), quint32(value.size()) };
    mText.insert(mText.end(), key.begin(), key.end());
    mText.insert(mText.end(), value.begin(), value.end());
    return slot;
}

void clsProperties::append(QByteArrayView key, QByteArrayView value)
{
    mSlots.push_back(store(key, value));
    mIndex.appended(key, Count() - 1);
}

clsProperty clsProperties::Add(QByteArrayView key, QByteArrayView value)
{
    const QByteArray numbered = indexOf(key) < 0 ? QByteArray() : mIndex.numberedKeyIfTaken(key, keys());
    append(numbered.isNull() ? key : QByteArrayView(numbered), value);
    return clsProperty(this, Count() - 1);
}

clsProperty clsProperties::Insert(int position, QByteArrayView key, QByteArrayView value)
{
    position = qBound(0, position, Count());
    mSlots.insert(mSlots.begin() + position, store(key, value));
    mIndex.invalidate();
    return clsProperty(this, position);
}

int clsProperties::indexOf(QByteArrayView key) const
{
    // Most elements have a few properties: compare in place, without the index.
    if (mSlots.size() <= 16) {
        const char *text = mText.data();
        for (int i = 0; i < Count(); ++i) {
            const Slot &s = mSlots[i];
            if (s.keyLength == quint32(key.size())
                && KeyIndex::sameKey(QByteArrayView(text + s.offset, s.keyLength), key))
                return i;
        }
        return -1;
    }
    return mIndex.indexOf(key, keys());
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
    const Slot &s = mSlots[size_t(index)];
    return QByteArrayView(mText.data() + s.offset, s.keyLength);
}

QByteArrayView clsProperties::valueAt(int index) const
{
    const Slot &s = mSlots[size_t(index)];
    return QByteArrayView(mText.data() + s.offset + s.keyLength, s.valueLength);
}

void clsProperties::setValueAt(int index, const QByteArray &value)
{
    Slot &s = mSlots[size_t(index)];
    if (quint32(value.size()) <= s.valueLength) {
        // Fits where the old value stood.
        memcpy(mText.data() + s.offset + s.keyLength, value.constData(), value.size());
        mUnusedBytes += s.valueLength - quint32(value.size());
        s.valueLength = quint32(value.size());
    } else {
        const QByteArray key = keyAt(index).toByteArray();
        mUnusedBytes += s.keyLength + s.valueLength;
        mSlots[size_t(index)] = store(key, value);
    }
    compactIfWasteful();
}

void clsProperties::compactIfWasteful()
{
    if (mUnusedBytes < 256 || mUnusedBytes * 2 < quint32(mText.size()))
        return;
    std::vector<char> text;
    text.reserve(mText.size() - mUnusedBytes);
    for (Slot &s : mSlots) {
        const quint32 offset = quint32(text.size());
        const auto from = mText.begin() + s.offset;
        text.insert(text.end(), from, from + s.keyLength + s.valueLength);
        s.offset = offset;
    }
    mText.swap(text);
    mUnusedBytes = 0;
}

void clsProperties::Remove(QByteArrayView key)
{
    const int i = indexOf(key);
    if (i < 0)
        throw MissingKeyError(key.toByteArray());
    Remove(i + 1);
}

void clsProperties::Remove(int position)
{
    if (position < 1 || position > Count())
        throw std::out_of_range("No property at position " + std::to_string(position));
    const Slot &s = mSlots[size_t(position - 1)];
    mUnusedBytes += s.keyLength + s.valueLength;
    mSlots.erase(mSlots.begin() + (position - 1));
    mIndex.invalidate();
    compactIfWasteful();
}

void clsProperties::Clear()
{
    mText.clear();
    mSlots.clear();
    mUnusedBytes = 0;
    mIndex.invalidate();
}

void clsProperties::reserve(int count, qsizetype textBytes)
{
    mSlots.reserve(size_t(count));
    mText.reserve(size_t(textBytes));
}

void clsProperties::squeeze()
{
    mSlots.shrink_to_fit();
    mText.shrink_to_fit();
}

qsizetype clsProperties::memoryUsed() const
{
    return qsizetype(sizeof(*this) + mText.capacity() + mSlots.capacity() * sizeof(Slot));
}
