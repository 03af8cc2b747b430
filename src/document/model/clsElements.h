// SPDX-License-Identifier: MIT
#pragma once

#include "clsElement.h"

#include <memory>
#include <vector>

class KeyIndex;

// An ordered, keyed collection of elements. Order is insertion order and is the
// order of writing. A repeated name K gets the key "K[0]", "K[1]", ...; keys
// compare without regard to ASCII case. The collection owns its elements.
class clsElements
{
public:
    clsElements();
    ~clsElements();
    clsElements(const clsElements &) = delete;
    clsElements &operator=(const clsElements &) = delete;

    // A new element named `name` (kept as given) of type `type` (upper-cased),
    // stored at the end under the unique key made from the name.
    clsElement *Add(const QByteArray &name, const QByteArray &type);
    // The same, with the properties of `properties` (as AddPacked stores them).
    clsElement *Add(const QByteArray &name, const QByteArray &type, const PropertyPack &properties);
    // Stores an existing element at the end under the unique key made from `key`.
    clsElement *AddElement(std::unique_ptr<clsElement> element, const QByteArray &key);
    // Puts an element back at a 0-based position under exactly its own
    // ElementKey (which must be free); used to undo a removal.
    clsElement *Insert(int position, std::unique_ptr<clsElement> element);
    // Takes the element at a 0-based position out of the collection, whole.
    std::unique_ptr<clsElement> Take(int position);

    // By key; throws MissingKeyError when there is none.
    clsElement *Item(QByteArrayView key) const;
    // By 1-based position, as the skin's own names count; throws
    // std::out_of_range when there is none. The program itself uses at().
    clsElement *Item(int position) const;
    // By key; nullptr when there is none.
    clsElement *Find(QByteArrayView key) const;
    int Count() const { return int(mItems.size()); }
    bool isEmpty() const { return mItems.empty(); }
    bool ItemExist(QByteArrayView key) const { return indexOf(key) >= 0; }
    void Remove(QByteArrayView key);
    // By 1-based position, as Item(int); the program itself uses removeAt().
    void Remove(int position);
    void Clear();

    // ---- 0-based positions, for the program's own code ----
    int indexOf(QByteArrayView key) const;
    // The position of this element, -1 when it is not here.
    int positionOf(const clsElement *element) const;
    clsElement *at(int index) const { return mItems[size_t(index)].get(); }
    void removeAt(int index) { Take(index); }

    qsizetype memoryUsed() const;

    class const_iterator
    {
    public:
        using Base = std::vector<std::unique_ptr<clsElement>>::const_iterator;
        explicit const_iterator(Base it) : mIt(it) { }
        clsElement *operator*() const { return mIt->get(); }
        const_iterator &operator++() { ++mIt; return *this; }
        bool operator!=(const const_iterator &o) const { return mIt != o.mIt; }
        bool operator==(const const_iterator &o) const { return mIt == o.mIt; }

    private:
        Base mIt;
    };
    const_iterator begin() const { return const_iterator(mItems.begin()); }
    const_iterator end() const { return const_iterator(mItems.end()); }

private:

    std::vector<std::unique_ptr<clsElement>> mItems;
    std::unique_ptr<KeyIndex> mIndex;
};
