// SPDX-License-Identifier: MIT
#include "NameWord.h"

#include "UiLineScanner.h"

namespace NameWord {

namespace {

QString notAName(const QString &name)
{
    return QStringLiteral("\u201c%1\u201d cannot be a name: use letters, digits, _ and /").arg(name);
}

} // namespace

bool isNameWord(QByteArrayView word)
{
    if (word.isEmpty())
        return false;
    for (char c : word) {
        if (!UiLineScanner::isNameChar(static_cast<unsigned char>(c)))
            return false;
    }
    return true;
}

QString problemWithName(const QString &name)
{
    // Only ASCII characters are name characters: any other becomes "?" here.
    if (!isNameWord(name.toLatin1()))
        return notAName(name);
    if (name.endsWith(QLatin1Char('/')))
        return QStringLiteral("\u201c%1\u201d cannot be a name: it cannot end with /").arg(name);
    return {};
}

QString problemWithKey(const QString &key)
{
    const QByteArray bytes = key.toLatin1();
    if (!isNameWord(bytes) || bytes == "/")
        return notAName(key);
    return {};
}

} // namespace NameWord
