// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

// Skin text quoted in a problem's message: as UTF-8 when it is valid UTF-8 (as
// most skins written today are), else byte for byte as Latin-1, as the tree
// shows skin text.
namespace ProblemText {

inline QString shown(QByteArrayView bytes)
{
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes.data(), bytes.size());
    return QString::fromLatin1(bytes.data(), bytes.size());
}

// "a", "a and b", "a, b and c".
inline QString listed(const QStringList &items)
{
    if (items.size() <= 1)
        return items.join(QString());
    return items.mid(0, items.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" and ") + items.last();
}

} // namespace ProblemText
