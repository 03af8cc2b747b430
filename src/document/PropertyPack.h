#pragma once

#include "PropertySlot.h"

#include <QByteArrayView>
#include <memory>
#include <vector>

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
        mSlots.clear();
        mTextSize = 0;
    }

    // Copies a key and its value in as they are.
    void add(QByteArrayView key, QByteArrayView value);

    // For a writer that fills the text in place: makes room for `more` bytes
    // after the text and returns where they begin. Bytes written there become
    // part of the pack only through commit(); until then a later reserve()
    // keeps them, wherever it moves the text.
    char *reserve(size_t more)
    {
        if (mTextSize + more > mCapacity)
            grow(mTextSize + more);
        return mText.get() + mTextSize;
    }
    // The key and the value just written at the end of the text are one more
    // property.
    void commit(quint32 keyLength, quint32 valueLength)
    {
        mSlots.push_back({ mTextSize, keyLength, valueLength });
        mTextSize += keyLength + valueLength;
    }

    int count() const { return int(mSlots.size()); }
    bool isEmpty() const { return mSlots.empty(); }
    const PropertySlot *slotTable() const { return mSlots.data(); }
    const char *text() const { return mText.get(); }
    quint32 textSize() const { return mTextSize; }
    QByteArrayView keyAt(int index) const;
    QByteArrayView valueAt(int index) const;

private:
    void grow(size_t needed);

    std::vector<PropertySlot> mSlots;
    std::unique_ptr<char[]> mText;
    size_t mCapacity = 0;
    quint32 mTextSize = 0;
};
