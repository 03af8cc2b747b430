// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <stdexcept>

// Thrown by the keyed collections when an item is asked for by a key that is not
// there. Code that expects absence uses ItemExist or Find instead.
class MissingKeyError : public std::out_of_range
{
public:
    explicit MissingKeyError(const QByteArray &key)
        : std::out_of_range(("No item with the key \"" + key + "\"").toStdString())
        , mKey(key)
    {
    }
    QByteArray key() const { return mKey; }

private:
    QByteArray mKey;
};
