// SPDX-License-Identifier: MIT
#include "TypedText.h"

#include "ApplicationInfo.h"
#include "AsciiCase.h"
#include "Dialogs.h"
#include "NameWord.h"
#include "ValueSpelling.h"

namespace {

std::optional<QByteArray> refused(Dialogs &dialogs, const QString &problem)
{
    dialogs.message(ApplicationInfo::windowTitle(), problem, Dialogs::Icon::Warning);
    return std::nullopt;
}

// Skin text is kept as one byte per character, as the grid and the prompts
// show it: a character beyond that range would be stored as another one.
std::optional<QByteArray> storable(Dialogs &dialogs, const QString &typed)
{
    std::optional<QByteArray> bytes = TypedText::bytesOf(typed);
    if (!bytes)
        return refused(dialogs, QStringLiteral("\u201c%1\u201d cannot be stored: it holds a character the skin's text cannot hold").arg(typed));
    return bytes;
}

} // namespace

namespace TypedText {

std::optional<QByteArray> bytesOf(const QString &typed)
{
    for (const QChar c : typed) {
        if (c.unicode() > 0xFF)
            return std::nullopt;
    }
    return typed.toLatin1();
}

std::optional<QByteArray> value(Dialogs &dialogs, const QString &typed)
{
    const std::optional<QByteArray> bytes = storable(dialogs, typed);
    if (!bytes)
        return std::nullopt;
    const ValueSpelling::Result spelled = ValueSpelling::of(*bytes);
    if (!spelled.ok())
        return refused(dialogs, spelled.problem);
    return spelled.spelling;
}

std::optional<QByteArray> name(Dialogs &dialogs, const QString &typed)
{
    const QString problem = NameWord::problemWithName(typed);
    if (!problem.isEmpty())
        return refused(dialogs, problem);
    return storable(dialogs, typed);
}

std::optional<QByteArray> key(Dialogs &dialogs, const QString &typed)
{
    const QString problem = NameWord::problemWithKey(typed);
    if (!problem.isEmpty())
        return refused(dialogs, problem);
    const std::optional<QByteArray> bytes = storable(dialogs, typed);
    if (!bytes)
        return std::nullopt;
    return AsciiCase::lowered(*bytes);
}

} // namespace TypedText
