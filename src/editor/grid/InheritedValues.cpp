// SPDX-License-Identifier: MIT
#include "InheritedValues.h"

#include "AsciiCase.h"
#include "clsKorviInterface.h"

#include <QVarLengthArray>

namespace {

bool named(const QList<InheritedValues::Value> &values, QByteArrayView name)
{
    for (const InheritedValues::Value &value : values) {
        if (AsciiCase::sameIgnoringCase(value.name, name))
            return true;
    }
    return false;
}

void addFromEntry(QList<InheritedValues::Value> &values, const clsElement &element,
                  const clsElement &entry, bool ownToo)
{
    for (const clsProperty property : entry.Properties()) {
        const QByteArray name = property.IDKey();
        if ((!ownToo && element.Properties().Find(name)) || named(values, name))
            continue;
        // The first property of that name is the one the renderer reads.
        const clsProperty first = entry.Properties().Find(name);
        values.append({ name, first ? first.value() : property.value(), entry.strName() });
    }
}

void addThroughChains(QList<InheritedValues::Value> &values, const clsElement &element,
                      QByteArrayView linkKey, const clsElements &targets, bool ownToo)
{
    for (const clsProperty link : element.Properties()) {
        if (!AsciiCase::sameIgnoringCase(link.IDKey(), linkKey))
            continue;
        QVarLengthArray<const clsElement *, 8> visited;
        const clsElement *entry = targets.Find(link.valueView());
        while (entry && !visited.contains(entry)) {
            addFromEntry(values, element, *entry, ownToo);
            visited.append(entry);
            const clsProperty next = entry->Properties().Find(linkKey);
            entry = next ? targets.Find(next.valueView()) : nullptr;
        }
    }
}

} // namespace

QList<InheritedValues::Value> InheritedValues::of(const clsKorviInterface &document,
                                                  const clsElement &element)
{
    QList<Value> values;
    addThroughChains(values, element, "template", document.Templates(), false);
    addThroughChains(values, element, "fonttype", document.Fonts(), false);
    return values;
}

bool InheritedValues::givenFor(const clsKorviInterface &document, const clsElement &element, QByteArrayView name)
{
    QList<Value> values;
    addThroughChains(values, element, "template", document.Templates(), true);
    addThroughChains(values, element, "fonttype", document.Fonts(), true);
    return named(values, name);
}
