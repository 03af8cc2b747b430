// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <stdexcept>

// A key is already in use in a collection of the grid (rows, columns or the
// choices of a list); keys compare without regard to case.
class DuplicateKeyError : public std::invalid_argument
{
public:
    explicit DuplicateKeyError(const QString &key)
        : std::invalid_argument((QStringLiteral("The key \"") + key + QStringLiteral("\" is already in use")).toStdString())
        , mKey(key)
    {
    }
    QString key() const { return mKey; }

private:
    QString mKey;
};
