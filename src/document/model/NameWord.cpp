// SPDX-License-Identifier: MIT
#include "NameWord.h"

#include "SkinCodec.h"
#include "UiLineScanner.h"

namespace NameWord {

namespace {

QString notAName(const QString &name)
{
    // The reader's letters are the ASCII ones: "ui_Карта" would read as "ui_".
    const QChar other = SkinCodec::firstNonAscii(name);
    if (!other.isNull())
        return QStringLiteral("\u201c%1\u201d cannot be a name: \u201c%2\u201d is not an ASCII letter, and a name is "
                              "written with the letters A-Z and a-z, digits, _ and / only")
            .arg(name, QString(other));
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
    if (!SkinCodec::firstNonAscii(name).isNull() || !isNameWord(SkinCodec::wordBytes(name)))
        return notAName(name);
    if (name.endsWith(QLatin1Char('/')))
        return QStringLiteral("\u201c%1\u201d cannot be a name: it cannot end with /").arg(name);
    return {};
}

QString problemWithKey(const QString &key)
{
    const QByteArray bytes = SkinCodec::wordBytes(key);
    if (!SkinCodec::firstNonAscii(key).isNull() || !isNameWord(bytes) || bytes == "/")
        return notAName(key);
    return {};
}

} // namespace NameWord
