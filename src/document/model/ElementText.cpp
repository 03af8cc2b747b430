// SPDX-License-Identifier: MIT
#include "ElementText.h"

#include "AsciiCase.h"
#include "NameWord.h"
#include "ValueSpelling.h"
#include "clsElements.h"

namespace {

QString described(const SkinCodec &codec, const clsElement &element)
{
    return QStringLiteral("%1 %2").arg(codec.toText(element.ElementType()), codec.toText(element.strName()));
}

} // namespace

QByteArray ElementText::of(const clsElement &element, QString &problem) const
{
    QByteArray out;
    append(out, element, mIndent, problem);
    return problem.isEmpty() ? out : QByteArray();
}

bool ElementText::opensBlock(const QByteArray &type)
{
    return type == "LAYER" || type == "ELEMENT_TEMPLATE" || type == "OBSERVER" || type == "STATE" || type == "SCRIPT";
}

QByteArray ElementText::attribute(QByteArrayView key, QByteArrayView value, const SkinCodec &codec, QString &problem)
{
    const QByteArray plainKey = clsProperty::idKeyOf(key);
    const QString keyProblem = NameWord::problemWithKey(codec.toText(plainKey));
    if (!keyProblem.isEmpty()) {
        problem = keyProblem;
        return {};
    }
    if (value == clsProperty::noValue())
        return ' ' + plainKey;
    const QByteArray bytes = value.toByteArray();
    if (!ValueSpelling::readsBack(bytes)) {
        problem = QStringLiteral("the value %1 of %2 does not read back as it is").arg(codec.toText(bytes), codec.toText(plainKey));
        return {};
    }
    return ' ' + plainKey + '=' + bytes;
}

QByteArray ElementText::openingOf(const clsElement &element, QString &problem) const
{
    const QByteArray out = opening(element, mIndent, problem);
    return problem.isEmpty() ? out : QByteArray();
}

QByteArray ElementText::closingOf(const clsElement &element) const
{
    return closing(element, mIndent);
}

void ElementText::append(QByteArray &out, const clsElement &element, const QByteArray &indent, QString &problem) const
{
    out += opening(element, indent, problem);
    if (!problem.isEmpty())
        return;
    if (element.subElementCount() > 0 && !opensBlock(element.ElementType())) {
        problem = QStringLiteral("%1 cannot be written: only blocks hold elements").arg(described(mCodec, element));
        return;
    }
    for (const clsElement *child : element.SubElements()) {
        if (problem.isEmpty())
            append(out, *child, indent + '\t', problem);
    }
    out += closing(element, indent);
}

QByteArray ElementText::opening(const clsElement &element, const QByteArray &indent, QString &problem) const
{
    const QByteArray type = element.ElementType();
    const QByteArray name = element.strName();
    if (!NameWord::isNameWord(type) || type.contains('/')
        || (!name.isEmpty() && !NameWord::problemWithName(mCodec.toText(name)).isEmpty())) {
        problem = QStringLiteral("%1 cannot be written: its type or name is not one word").arg(described(mCodec, element));
        return {};
    }
    const bool isScript = type == "SCRIPT";
    QByteArray out = indent + '<' + type;
    // A var tag has no name word: its name is that of the tag before it.
    if (!name.isEmpty() && type != "VAR")
        out += ' ' + name;
    const clsProperties &props = element.Properties();
    if (!isScript) {
        for (int i = 0; i < props.Count() && problem.isEmpty(); ++i)
            out += attribute(props.keyAt(i), props.valueAt(i), mCodec, problem);
    }
    // A used layer's tag ends in "/>" as the skins write it; a blank keeps
    // the "/" out of a last value.
    if (type == "USELAYER")
        out += props.Count() > 0 ? " />" : "/>";
    else
        out += '>';
    out += mLineEnd;
    if (isScript) {
        for (int i = 0; i < props.Count() && problem.isEmpty(); ++i) {
            const QByteArray line = props.valueAt(i).toByteArray();
            if (!ValueSpelling::readsBackAsScriptLine(line) || AsciiCase::lowered(clsProperty::idKeyOf(props.keyAt(i))) != "scriptline")
                problem = QStringLiteral("%1 cannot be written: a script line does not read back as it is").arg(described(mCodec, element));
            out += indent + '\t' + line + mLineEnd;
        }
    }
    return out;
}

QByteArray ElementText::closing(const clsElement &element, const QByteArray &indent) const
{
    return opensBlock(element.ElementType()) ? indent + "</" + element.ElementType() + '>' + mLineEnd : QByteArray();
}
