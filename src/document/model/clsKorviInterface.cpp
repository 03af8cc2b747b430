// SPDX-License-Identifier: MIT
#include "clsKorviInterface.h"

#include "KeyIndex.h"

#include <QVarLengthArray>

QByteArray clsKorviInterface::GetElementValue(QByteArrayView name, const clsElement *element) const
{
    if (!element)
        return {};
    if (const clsProperty own = element->Properties().Find(name))
        return own.value();
    QByteArray found = valueThroughChains(name, element, "template", mTemplates);
    if (found.isNull())
        found = valueThroughChains(name, element, "fonttype", mFonts);
    return found.isNull() ? QByteArray("") : found;
}

// Walks every `linkKey` property of the element in order and follows each chain
// of entries in `targets`. The link is taken as stored: a quoted template name
// finds nothing. A chain that comes back to a name it has already visited ends
// there, as if that entry were missing, and the next link of the element is tried.
// Returns a null array when no chain gives a value.
QByteArray clsKorviInterface::valueThroughChains(QByteArrayView name, const clsElement *element,
                                                 QByteArrayView linkKey,
                                                 const clsElements &targets) const
{
    const clsProperties &props = element->Properties();
    for (int i = 0; i < props.Count(); ++i) {
        if (!KeyIndex::sameKey(clsProperty::idKeyView(props.keyAt(i)), linkKey))
            continue;
        // The same name always finds the same entry, so the entries seen so far
        // tell a cycle.
        QVarLengthArray<const clsElement *, 8> visited;
        const clsElement *entry = targets.Find(props.valueAt(i));
        while (entry && !visited.contains(entry)) {
            if (const clsProperty p = entry->Properties().Find(name)) {
                QByteArray v = p.value();
                return v.isNull() ? QByteArray("") : v;
            }
            visited.append(entry);
            const clsProperty next = entry->Properties().Find(linkKey);
            entry = next ? targets.Find(next.valueView()) : nullptr;
        }
    }
    return QByteArray();
}

void clsKorviInterface::Clear()
{
    mLayers.Clear();
    mTemplates.Clear();
    mFonts.Clear();
    mHeaders.Clear();
    mSources.clear();
}

qsizetype clsKorviInterface::memoryUsed() const
{
    return sizeof(*this) + mLayers.memoryUsed() + mTemplates.memoryUsed() + mFonts.memoryUsed()
        + mHeaders.memoryUsed() + mSources.memoryUsed();
}
