// SPDX-License-Identifier: MIT
#include "DocumentJson.h"

#include "SkinReadError.h"
#include "clsKorviInterface.h"

namespace {

void appendElements(QByteArray &out, const clsElements &elements, int depth);

void appendIndent(QByteArray &out, int depth)
{
    out += '\n';
    out.append(qsizetype(depth), ' ');
}

void appendProperties(QByteArray &out, const clsProperties &props)
{
    out += '[';
    for (int i = 0; i < props.Count(); ++i) {
        if (i > 0)
            out += ", ";
        out += '[' + JsonStringFromBytes(props.keyAt(i)) + ", "
            + JsonStringFromBytes(props.valueAt(i)) + ']';
    }
    out += ']';
}

void appendElement(QByteArray &out, const clsElement &e, int depth)
{
    out += "{\"key\": " + JsonStringFromBytes(e.ElementKey());
    out += ", \"type\": " + JsonStringFromBytes(e.ElementType());
    out += ", \"name\": " + JsonStringFromBytes(e.strName());
    out += ", \"imported\": ";
    out += e.IsImported ? "true" : "false";
    out += ", \"properties\": ";
    appendProperties(out, e.Properties());
    out += ", \"children\": ";
    if (e.subElementCount() > 0)
        appendElements(out, e.SubElements(), depth + 1);
    else
        out += "[]";
    out += '}';
}

void appendElements(QByteArray &out, const clsElements &elements, int depth)
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
        appendElement(out, *e, depth + 1);
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
    out += "{\"file\": " + JsonStringFromBytes(error->file().toUtf8());
    out += ", \"line\": " + QByteArray::number(error->line());
    out += ", \"message\": " + JsonStringFromBytes(error->message().toUtf8()) + '}';
}

} // namespace

QByteArray JsonStringFromBytes(QByteArrayView bytes)
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

QByteArray DocumentToJson(const clsKorviInterface &document, const SkinReadError *error)
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
        appendElements(out, *elements, 1);
        out += ',';
    }
    out += "\n \"error\": ";
    appendError(out, error);
    out += "\n}\n";
    return out;
}
