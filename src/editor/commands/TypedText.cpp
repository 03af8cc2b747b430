// SPDX-License-Identifier: MIT
#include "TypedText.h"

#include "ApplicationInfo.h"
#include "AsciiCase.h"
#include "Dialogs.h"
#include "NameWord.h"
#include "SkinCodec.h"
#include "ValueSpelling.h"

namespace {

std::optional<QByteArray> refused(Dialogs &dialogs, const QString &problem)
{
    dialogs.message(ApplicationInfo::windowTitle(), problem, Dialogs::Icon::Warning);
    return std::nullopt;
}

} // namespace

namespace TypedText {

std::optional<QByteArray> value(Dialogs &dialogs, const QString &typed, const SkinCodec &codec)
{
    const ValueSpelling::Result spelled = ValueSpelling::ofText(typed, codec);
    if (!spelled.ok())
        return refused(dialogs, spelled.problem);
    return spelled.spelling;
}

// A name word is ASCII only, the same bytes in every code page.
std::optional<QByteArray> name(Dialogs &dialogs, const QString &typed)
{
    const QString problem = NameWord::problemWithName(typed);
    if (!problem.isEmpty())
        return refused(dialogs, problem);
    return SkinCodec::wordBytes(typed);
}

std::optional<QByteArray> key(Dialogs &dialogs, const QString &typed)
{
    const QString problem = NameWord::problemWithKey(typed);
    if (!problem.isEmpty())
        return refused(dialogs, problem);
    return AsciiCase::lowered(SkinCodec::wordBytes(typed));
}

} // namespace TypedText
