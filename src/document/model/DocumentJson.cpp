// SPDX-License-Identifier: MIT
#include "DocumentJson.h"

#include "SkinReadError.h"
#include "clsKorviInterface.h"

namespace {

void appendElements(QByteArray &out, const clsElements &elements, int depth, const SkinCodec *codec);

// Skin bytes as a JSON string: byte for byte, or decoded in `codec`.
QByteArray jsonString(QByteArrayView bytes, const SkinCodec *codec)
{
    return codec ? jsonStringFromText(codec->toText(bytes)) : jsonStringFromBytes(bytes);
}

void appendIndent(QByteArray &out, int depth)
{
    out += '\n';
    out.append(qsizetype(depth), ' ');
}

void appendProperties(QByteArray &out, const clsProperties &props, const SkinCodec *codec)
{
    out += '[';
    for (int i = 0; i < props.Count(); ++i) {
        if (i > 0)
            out += ", ";
        out += '[' + jsonString(props.keyAt(i), codec) + ", " + jsonString(props.valueAt(i), codec) + ']';
    }
    out += ']';
}

void appendElement(QByteArray &out, const clsElement &e, int depth, const SkinCodec *codec)
{
    out += "{\"key\": " + jsonString(e.ElementKey(), codec);
    out += ", \"type\": " + jsonString(e.ElementType(), codec);
    out += ", \"name\": " + jsonString(e.strName(), codec);
    out += ", \"imported\": ";
    out += e.IsImported ? "true" : "false";
    out += ", \"properties\": ";
    appendProperties(out, e.Properties(), codec);
    out += ", \"children\": ";
    if (e.subElementCount() > 0)
        appendElements(out, e.SubElements(), depth + 1, codec);
    else
        out += "[]";
    out += '}';
}

void appendElements(QByteArray &out, const clsElements &elements, int depth, const SkinCodec *codec)
{
    if (elements.isEmpty()) {
        out += "[]";
        return;
    }
    out += '[';
    bool first = true;
    for (const clsElement *e : elements) {
        if (!first)
            out += ',';
        first = false;
        appendIndent(out, depth + 1);
        appendElement(out, *e, depth + 1, codec);
    }
    appendIndent(out, depth);
    out += ']';
}

void appendError(QByteArray &out, const SkinReadError *error)
{
    if (!error) {
        out += "null";
        return;
    }
    out += "{\"file\": " + jsonStringFromBytes(error->file().toUtf8());
    out += ", \"line\": " + QByteArray::number(error->line());
    out += ", \"message\": " + jsonStringFromBytes(error->message().toUtf8()) + '}';
}

} // namespace

QByteArray jsonStringFromBytes(QByteArrayView bytes)
{
    static const char hex[] = "0123456789abcdef";
    QByteArray out;
    out.reserve(bytes.size() + 2);
    out += '"';
    for (char ch : bytes) {
        const unsigned char c = static_cast<unsigned char>(ch);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += char(c);
        } else if (c >= 0x20 && c < 0x7f) {
            out += char(c);
        } else {
            out += "\\u00";
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    out += '"';
    return out;
}

QByteArray jsonStringFromText(QStringView text)
{
    static const char hex[] = "0123456789abcdef";
    QByteArray out;
    out.reserve(text.size() + 2);
    out += '"';
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c == '"' || c == '\\') {
            out += '\\';
            out += char(c);
        } else if (c >= 0x20 && c < 0x7f) {
            out += char(c);
        } else {
            out += "\\u";
            for (int shift = 12; shift >= 0; shift -= 4)
                out += hex[(c >> shift) & 15];
        }
    }
    out += '"';
    return out;
}

QByteArray documentToJson(const clsKorviInterface &document, const SkinReadError *error, const SkinCodec *codec)
{
    QByteArray out = "{";
    const std::pair<const char *, const clsElements *> sections[] = {
        { "Headers", &document.Headers() },
        { "Templates", &document.Templates() },
        { "Fonts", &document.Fonts() },
        { "Layers", &document.Layers() },
    };
    for (const auto &[name, elements] : sections) {
        out += "\n \"" + QByteArray(name) + "\": ";
        appendElements(out, *elements, 1, codec);
        out += ',';
    }
    out += "\n \"error\": ";
    appendError(out, error);
    out += "\n}\n";
    return out;
}
