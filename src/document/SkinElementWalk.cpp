// SPDX-License-Identifier: MIT
#include "SkinElementWalk.h"

#include "NodeKey.h"
#include "clsKorviInterface.h"

namespace {

using Visitor = std::function<void(const SkinElementWalk::Visit &)>;

void walkChildren(const clsElement &parent, const QByteArray &parentKey, const Visitor &visit)
{
    if (parent.subElementCount() == 0)
        return;
    for (const clsElement *child : parent.SubElements()) {
        // Under an element without a node, its children have none either.
        const QByteArray key = parentKey.isEmpty()
            ? QByteArray()
            : parentKey + NodeKey::Separator + NodeKey::childLetter(*child) + child->ElementKey();
        visit({ *child, key, &parent });
        walkChildren(*child, key, visit);
    }
}

void walkTop(const clsElements &elements, const std::function<QByteArray(const clsElement &)> &keyOf,
             const Visitor &visit)
{
    for (const clsElement *element : elements) {
        const QByteArray key = keyOf(*element);
        visit({ *element, key, nullptr });
        walkChildren(*element, key, visit);
    }
}

} // namespace

namespace SkinElementWalk {

void forEach(const clsKorviInterface &document, const Visitor &visit)
{
    walkTop(document.Headers(), [](const clsElement &e) { return e.ElementKey(); }, visit);
    walkTop(document.Templates(), [](const clsElement &e) { return 'T' + e.ElementKey(); }, visit);
    walkTop(document.Fonts(), [](const clsElement &) { return QByteArray(); }, visit);
    walkTop(document.Layers(), [](const clsElement &e) { return NodeKey::blockLetter(e) + e.ElementKey(); }, visit);
}

} // namespace SkinElementWalk
