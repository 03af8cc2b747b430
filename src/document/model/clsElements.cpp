// SPDX-License-Identifier: MIT
#include "clsElements.h"

#include "KeyIndex.h"
#include "MissingKeyError.h"
#include "PropertyPack.h"

#include <stdexcept>

namespace {

KeyIndex::Keys keysOf(const clsElements &elements)
{
    auto keyOf = [](const void *owner, int i) {
        return static_cast<const clsElements *>(owner)->at(i)->keyView();
    };
    return { &elements, keyOf, elements.Count() };
}

} // namespace

clsElements::clsElements() : mIndex(std::make_unique<KeyIndex>()) { }

clsElements::~clsElements() = default;

clsElement *clsElements::Add(const QByteArray &name, const QByteArray &type)
{
    return Add(name, type, PropertyPack());
}

clsElement *clsElements::Add(const QByteArray &name, const QByteArray &type, const PropertyPack &properties)
{
    // Properties whose keys repeat are numbered as they are added, which needs
    // room the packed block does not have.
    const bool packable = !properties.isEmpty() && properties.distinctLeadingKeys() == properties.count();
    auto element = packable ? clsElement::createWith(properties) : std::make_unique<clsElement>();
    if (!packable)
        element->Properties().AddPacked(properties);
    element->setStrName(name);
    element->setElementType(type);
    return AddElement(std::move(element), name);
}

clsElement *clsElements::AddElement(std::unique_ptr<clsElement> element, const QByteArray &key)
{
    // A free name is the key itself: the element then holds no key of its own.
    const bool free = mIndex->claimIfFree(key, keysOf(*this));
    element->setElementKey(free ? key : mIndex->numberedKey(key, keysOf(*this)));
    element->mOwner = this;
    try {
        mItems.push_back(std::move(element));
    } catch (...) {
        // The index may already list the element that did not fit.
        mIndex->invalidate();
        throw;
    }
    if (!free)
        mIndex->appended(mItems.back()->keyView(), Count() - 1);
    return mItems.back().get();
}

clsElement *clsElements::Insert(int position, std::unique_ptr<clsElement> element)
{
    position = qBound(0, position, Count());
    element->mOwner = this;
    clsElement *raw = element.get();
    mItems.insert(mItems.begin() + position, std::move(element));
    mIndex->invalidate();
    return raw;
}

std::unique_ptr<clsElement> clsElements::Take(int position)
{
    if (position < 0 || position >= Count())
        throw std::out_of_range("No element at position " + std::to_string(position + 1));
    std::unique_ptr<clsElement> element = std::move(mItems[size_t(position)]);
    mItems.erase(mItems.begin() + position);
    element->mOwner = nullptr;
    mIndex->invalidate();
    return element;
}

int clsElements::indexOf(QByteArrayView key) const
{
    return mIndex->indexOf(key, keysOf(*this));
}

int clsElements::positionOf(const clsElement *element) const
{
    for (size_t i = 0; i < mItems.size(); ++i) {
        if (mItems[i].get() == element)
            return int(i);
    }
    return -1;
}

clsElement *clsElements::Find(QByteArrayView key) const
{
    const int i = indexOf(key);
    return i < 0 ? nullptr : at(i);
}

clsElement *clsElements::Item(QByteArrayView key) const
{
    const int i = indexOf(key);
    if (i < 0)
        throw MissingKeyError(key.toByteArray());
    return at(i);
}

clsElement *clsElements::Item(int position) const
{
    if (position < 1 || position > Count())
        throw std::out_of_range("No element at position " + std::to_string(position));
    return at(position - 1);
}

void clsElements::Remove(QByteArrayView key)
{
    const int i = indexOf(key);
    if (i < 0)
        throw MissingKeyError(key.toByteArray());
    Take(i);
}

void clsElements::Remove(int position)
{
    removeAt(position - 1);
}

void clsElements::Clear()
{
    mItems.clear();
    mIndex->invalidate();
}

qsizetype clsElements::memoryUsed() const
{
    qsizetype bytes = sizeof(*this) + qsizetype(mItems.capacity() * sizeof(void *)) + qsizetype(sizeof(KeyIndex)) + mIndex->memoryUsed();
    for (const auto &e : mItems)
        bytes += e->memoryUsed();
    return bytes;
}
