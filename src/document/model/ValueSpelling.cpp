// SPDX-License-Identifier: MIT
#include "ValueSpelling.h"

#include "PropertyPack.h"
#include "UiLineScanner.h"

namespace {

// The attributes the reader reads from `line`, as a pack.
PropertyPack attributesOf(const QByteArray &text)
{
    QByteArray line;
    line.reserve(text.size() + 1 + UiCharRuns::kSlack);
    line.append(text);
    line.append('\r');
    QByteArray grown;
    // No line follows: a quote left open ends at the end of the line.
    UiLineScanner scanner(line.constData(), line.size(), grown, nullptr);
    scanner.position = 1;
    PropertyPack pack;
    scanner.ReadAttributes(pack, [] {});
    return pack;
}

bool readsBackIn(const QByteArray &line, const QByteArray &value, int attributes)
{
    const PropertyPack pack = attributesOf(line);
    return pack.count() == attributes && pack.keyAt(0) == "k" && pack.valueAt(0) == value;
}

} // namespace

bool ValueSpelling::readsBack(const QByteArray &value)
{
    return readsBackIn("k=" + value, value, 1) && readsBackIn("k=" + value + " y=1", value, 2);
}

bool ValueSpelling::readsBackAsScriptLine(const QByteArray &text)
{
    // A script line loses its tabs and carriage returns and the blanks around
    // it, and one whose first token is "<" is read as a tag.
    if (text.contains('\t') || text.contains('\r') || text.contains('\n'))
        return false;
    if (text.startsWith(' ') || text.endsWith(' '))
        return false;
    for (char c : text) {
        if (UiLineScanner::isTokenStart(static_cast<unsigned char>(c)))
            return c != '<';
    }
    return true;
}

ValueSpelling::Result ValueSpelling::of(const QByteArray &typed, const SkinCodec &codec)
{
    const auto shown = [&codec](const QByteArray &bytes) { return codec.toText(bytes); };
    // A quoted value that runs on to the next line is read with a CR where
    // the line ended, so a CR inside quotes reads back (the value is stored
    // over several lines); the reader never keeps a line feed.
    if (typed.contains('\n'))
        return { {}, QStringLiteral("\u201c%1\u201d cannot be stored: a value cannot hold a line break (LF)").arg(shown(typed)) };
    if (readsBack(typed))
        return { typed, {} };
    for (const char quote : { '"', '\'' }) {
        if (typed.contains(quote))
            continue;
        const QByteArray quoted = quote + typed + quote;
        if (readsBack(quoted))
            return { quoted, {} };
    }
    return { {}, QStringLiteral("\u201c%1\u201d cannot be stored: a value cannot hold both \" and '").arg(shown(typed)) };
}

ValueSpelling::Result ValueSpelling::ofText(const QString &typed, const SkinCodec &codec)
{
    const std::optional<QByteArray> bytes = codec.toBytes(typed);
    if (!bytes)
        return { {}, codec.refusal(typed) };
    return of(*bytes, codec);
}
