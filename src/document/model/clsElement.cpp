// SPDX-License-Identifier: MIT
#include "clsElement.h"

#include "AsciiCase.h"

#include "PropertyPack.h"
#include "clsElements.h"

#include <new>

clsElement::clsElement() = default;
clsElement::~clsElement() = default;

std::unique_ptr<clsElement> clsElement::createWith(const PropertyPack &properties)
{
    const size_t inlineBytes = clsProperties::blockSizeFor(properties);
    // The properties' slots need no more alignment than the element itself.
    static_assert(sizeof(clsElement) % alignof(PropertySlot) == 0);
    char *memory = static_cast<char *>(::operator new(sizeof(clsElement) + inlineBytes));
    std::unique_ptr<clsElement> element(::new (memory) clsElement());
    element->mProperties.adoptPacked(properties, memory + sizeof(clsElement));
    element->mInlineBytes = quint32(inlineBytes);
    return element;
}

clsElements &clsElement::SubElements()
{
    if (!mSubElements)
        mSubElements = std::make_unique<clsElements>();
    return *mSubElements;
}

const clsElements &clsElement::SubElements() const
{
    // Reading an element's children makes no collection: one without children
    // shows the same empty one.
    static const clsElements none;
    return mSubElements ? *mSubElements : none;
}

int clsElement::subElementCount() const
{
    return mSubElements ? mSubElements->Count() : 0;
}

QByteArray clsElement::upperAscii(QByteArray word)
{
    return AsciiCase::uppered(std::move(word));
}

void clsElement::setElementType(const QByteArray &type)
{
    mChangedSinceSource = true;
    // Skip the copy when the word is already upper case (the usual case), so
    // elements of one type share the same bytes.
    for (char c : type) {
        if (c >= 'a' && c <= 'z') {
            mType = upperAscii(type);
            return;
        }
    }
    mType = type;
}

QByteArray clsElement::ElementKey() const
{
    return mKeyIsName ? mName : mOwnKey ? *mOwnKey : QByteArray();
}

void clsElement::setElementKey(const QByteArray &key)
{
    // Most often the key is the very name the element was just given, bytes
    // shared: that needs no comparing.
    const bool sameBytes = key.constData() == mName.constData() && key.size() == mName.size();
    mKeyIsName = sameBytes || key == mName;
    if (mKeyIsName)
        mOwnKey.reset();
    else
        mOwnKey = std::make_unique<QByteArray>(key);
}

void clsElement::setStrName(const QByteArray &name)
{
    // The key stays what it was: it becomes the element's own before the
    // name changes under it.
    if (mKeyIsName && name != mName) {
        mOwnKey = std::make_unique<QByteArray>(mName);
        mKeyIsName = false;
    }
    mName = name;
    mChangedSinceSource = true;
}

int clsElement::Index() const
{
    return mOwner ? mOwner->positionOf(this) + 1 : 0;
}

qsizetype clsElement::memoryUsed() const
{
    qsizetype bytes = sizeof(*this) - sizeof(mProperties) + mProperties.memoryUsed();
    // Storage the properties have moved out of is still part of the element.
    if (!mProperties.usesLentStorage())
        bytes += mInlineBytes;
    bytes += mName.capacity();
    if (mOwnKey)
        bytes += qsizetype(sizeof(QByteArray)) + mOwnKey->capacity();
    if (mSubElements)
        bytes += mSubElements->memoryUsed();
    return bytes;
}
