// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace ProblemText {

// Skin text quoted in a problem's message, in the skin's code page.
inline QString shown(const SkinCodec &codec, QByteArrayView bytes)
{
    return codec.toText(bytes);
}

// "a", "a and b", "a, b and c".
inline QString listed(const QStringList &items)
{
    if (items.size() <= 1)
        return items.join(QString());
    return items.mid(0, items.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" and ") + items.last();
}

} // namespace ProblemText
