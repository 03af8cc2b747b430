// SPDX-License-Identifier: MIT
#include "clsProperty.h"

#include "clsProperties.h"

#include <cstring>

QByteArray clsProperty::Key() const
{
    return keyView().toByteArray();
}

QByteArray clsProperty::IDKey() const
{
    return idKeyOf(keyView());
}

QByteArray clsProperty::value() const
{
    return valueView().toByteArray();
}

QByteArray clsProperty::StringValue() const
{
    return stringValueOf(valueView());
}

QByteArrayView clsProperty::keyView() const
{
    return mOwner->keyAt(mIndex);
}

QByteArrayView clsProperty::valueView() const
{
    return mOwner->valueAt(mIndex);
}

QByteArrayView clsProperty::idKeyView(QByteArrayView key)
{
    // Called for every property of every look-up: memchr is far quicker than
    // the general search QByteArrayView::indexOf makes of one character.
    const void *bracket = key.isEmpty() ? nullptr : std::memchr(key.data(), '[', size_t(key.size()));
    return bracket ? key.first(static_cast<const char *>(bracket) - key.data()) : key;
}

QByteArray clsProperty::stringValueOf(QByteArrayView value)
{
    if (value.size() >= 2) {
        const char first = value.front();
        const char last = value.back();
        if ((first == '"' && last == '"') || (first == '\'' && last == '\''))
            return value.sliced(1, value.size() - 2).toByteArray();
    }
    return value.toByteArray();
}
