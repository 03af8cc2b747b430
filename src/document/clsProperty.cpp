// SPDX-License-Identifier: MIT
#include "clsProperty.h"

#include "clsProperties.h"

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
    const qsizetype bracket = key.indexOf('[');
    return bracket < 0 ? key : key.first(bracket);
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
