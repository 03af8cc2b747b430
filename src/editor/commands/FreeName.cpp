// SPDX-License-Identifier: MIT
#include "FreeName.h"

#include "clsElements.h"

namespace FreeName {

namespace {

bool taken(const QByteArray &name, const clsElements *siblings, const QList<QByteArray> &alsoTaken)
{
    if (siblings) {
        for (const clsElement *sibling : *siblings) {
            if (sibling->strName().compare(name, Qt::CaseInsensitive) == 0)
                return true;
        }
    }
    for (const QByteArray &other : alsoTaken) {
        if (other.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QByteArray numbered(const QByteArray &stem, qint64 from, const clsElements *siblings, const QList<QByteArray> &alsoTaken)
{
    for (qint64 n = from;; ++n) {
        const QByteArray name = stem + QByteArray::number(n);
        if (!taken(name, siblings, alsoTaken))
            return name;
    }
}

} // namespace

QByteArray of(const QByteArray &name, const clsElements *siblings, const QList<QByteArray> &alsoTaken)
{
    if (!taken(name, siblings, alsoTaken))
        return name;
    qsizetype digits = name.size();
    while (digits > 0 && name.at(digits - 1) >= '0' && name.at(digits - 1) <= '9')
        --digits;
    // A long run of digits is part of the name, not a count to go on from.
    const QByteArray tail = name.mid(digits);
    bool counted = false;
    const qint64 number = tail.size() <= 9 ? tail.toLongLong(&counted) : 0;
    return counted ? numbered(name.left(digits), number + 1, siblings, alsoTaken)
                   : numbered(name, 2, siblings, alsoTaken);
}

QByteArray forType(const QByteArray &type, const clsElements *siblings)
{
    static const std::pair<const char *, const char *> kPrefixes[] = {
        { "BUTTON", "btn" },      { "PUSHBUTTON", "pbtn" }, { "CHECKBOX", "chk" }, { "SLIDER", "sld" },
        { "HSCROLLBAR", "hscr" }, { "LIST", "lst" },        { "SPRITE", "spr" },   { "TEXT", "txt" },
        { "INPUTTEXT", "inp" },   { "USELAYER", "use" },    { "LAYER", "ui_Layer" },
    };
    QByteArray prefix = type.toLower().left(3);
    for (const auto &[name, short_] : kPrefixes) {
        if (type == name)
            prefix = short_;
    }
    return numbered(prefix, 1, siblings, {});
}

} // namespace FreeName
