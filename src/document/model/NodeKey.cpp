// SPDX-License-Identifier: MIT
#include "NodeKey.h"

#include "SkinCodec.h"
#include "clsKorviInterface.h"

#include <vector>

namespace {

struct Walk
{
    const clsKorviInterface &document;
    NodeTarget target;
    bool failed = false;

    void step(char letter, QByteArrayView key)
    {
        if (failed)
            return;
        clsElement *next = nullptr;
        switch (letter) {
        case 'T':
            next = document.Templates().Find(key);
            break;
        case 'L':
        case 'S':
        case 'U':
            next = document.Layers().Find(key);
            break;
        case 'E':
            if (target.element && target.element->subElementCount() > 0)
                next = target.element->SubElements().Find(key);
            break;
        case 'P':
            if (target.element)
                target.property = target.element->Properties().Find(key);
            // A property that is gone still names its owner: the key is not
            // found, but the element stays, so a view can show the owner.
            if (!target.property)
                failed = true;
            return;
        default:
            break;
        }
        if (!next) {
            fail();
            return;
        }
        target.element = next;
        target.property = clsProperty();
    }

    void fail()
    {
        failed = true;
        target = NodeTarget();
    }
};

NodeTarget walkSegments(Walk &walk, QByteArrayView rest)
{
    while (!rest.isEmpty() && !walk.failed) {
        const qsizetype bar = rest.indexOf(NodeKey::Separator);
        const QByteArrayView segment = bar < 0 ? rest : rest.first(bar);
        rest = bar < 0 ? QByteArrayView() : rest.sliced(bar + 1);
        if (segment.isEmpty()) {
            walk.fail();
            break;
        }
        walk.step(segment.at(0), segment.sliced(1));
    }
    walk.target.found = !walk.failed && walk.target.element;
    return walk.target;
}


// The element whose children hold `element`, searched level by level: most
// elements asked about are objects of a block, found among the blocks' own
// children without walking a whole skin.
const clsElement *parentOf(const clsKorviInterface &document, const clsElement *element)
{
    std::vector<const clsElements *> level = { &document.Layers(), &document.Templates(), &document.Headers() };
    while (!level.empty()) {
        std::vector<const clsElements *> below;
        for (const clsElements *collection : level) {
            for (const clsElement *candidate : *collection) {
                if (candidate->subElementCount() == 0)
                    continue;
                if (element->owner() == &candidate->SubElements())
                    return candidate;
                below.push_back(&candidate->SubElements());
            }
        }
        level.swap(below);
    }
    return nullptr;
}

} // namespace

NodeKey NodeKey::of(const clsKorviInterface &document, const clsElement *element)
{
    if (!element || !element->owner())
        return {};
    if (element->owner() == &document.Templates())
        return templateKey(*element);
    if (element->owner() == &document.Layers())
        return block(*element);
    if (element->owner() == &document.Headers())
        return NodeKey(element->ElementKey());
    const clsElement *parent = parentOf(document, element);
    if (!parent)
        return {};
    const NodeKey above = of(document, parent);
    return above.isEmpty() ? NodeKey() : above.child(*element);
}

NodeKey NodeKey::block(const clsElement &block)
{
    return NodeKey().joined(blockLetter(block), block.keyView());
}

NodeKey NodeKey::templateKey(const clsElement &tpl)
{
    return NodeKey().joined('T', tpl.keyView());
}

NodeKey NodeKey::child(const clsElement &child) const
{
    return joined(childLetter(child), child.keyView());
}

NodeKey NodeKey::property(const NodeKey &owner, QByteArrayView propertyKey)
{
    return owner.joined('P', propertyKey);
}

NodeKey NodeKey::joined(char letter, QByteArrayView key) const
{
    const QByteArray segment = segmentOf(letter, key);
    return isEmpty() ? NodeKey(segment) : under(*this, segment);
}

QByteArray NodeKey::segmentOf(char letter, QByteArrayView key)
{
    QByteArray bytes;
    bytes.reserve(key.size() + 1);
    if (letter)
        bytes.append(letter);
    return bytes.append(key);
}

NodeKey NodeKey::under(const NodeKey &above, QByteArrayView segment)
{
    QByteArray bytes;
    bytes.reserve(above.mBytes.size() + segment.size() + 1);
    bytes.append(above.mBytes).append(Separator).append(segment);
    return NodeKey(std::move(bytes));
}

QList<QByteArray> NodeKey::segments() const
{
    return mBytes.isEmpty() ? QList<QByteArray>() : mBytes.split(Separator);
}

NodeKey NodeKey::parent() const
{
    const qsizetype bar = mBytes.lastIndexOf(Separator);
    return bar < 0 ? NodeKey() : NodeKey(mBytes.left(bar));
}

bool NodeKey::isAncestorOf(const NodeKey &other) const
{
    return !isEmpty() && other.mBytes.size() > mBytes.size() + 1 && other.mBytes.startsWith(mBytes)
        && other.mBytes.at(mBytes.size()) == Separator;
}

char NodeKey::blockLetter(const clsElement &block)
{
    return block.IsState() ? 'S' : 'L';
}

char NodeKey::childLetter(const clsElement &child)
{
    return child.IsUseLayer() ? 'U' : 'E';
}

NodeTarget NodeKey::ResolveNodeKey(const clsKorviInterface &document, QByteArrayView key)
{
    Walk walk{ document, NodeTarget() };
    if (key.isEmpty())
        return NodeTarget();
    return walkSegments(walk, key);
}

NodeTarget NodeKey::ResolveHeaderNodeKey(const clsKorviInterface &document, QByteArrayView key)
{
    Walk walk{ document, NodeTarget() };
    const qsizetype bar = key.indexOf(Separator);
    const QByteArrayView first = bar < 0 ? key : key.first(bar);
    walk.target.element = document.Headers().Find(first);
    if (!walk.target.element)
        return NodeTarget();
    return walkSegments(walk, bar < 0 ? QByteArrayView() : key.sliced(bar + 1));
}

QString NodeKey::elementText(const clsElement &element, const SkinCodec &codec)
{
    return codec.toText(element.ElementType()) + QLatin1Char(':') + codec.toText(element.strName());
}

QString NodeKey::propertyText(const clsProperty &property, const SkinCodec &codec)
{
    const QByteArray name = property.IDKey();
    const QByteArrayView value = property.valueView();
    if (value == clsProperty::noValue())
        return codec.toText(name);
    return codec.toText(name) + QLatin1Char('=') + codec.toText(value);
}

char NodeKey::letterOf(QByteArrayView key)
{
    return key.isEmpty() ? 0 : key.at(0);
}

QByteArray NodeKey::propertyKey() const
{
    if (ownLetter() != 'P')
        return {};
    return mBytes.mid(mBytes.lastIndexOf(Separator) + 2);
}

char NodeKey::ownLetterOf(QByteArrayView key)
{
    const qsizetype bar = key.lastIndexOf(Separator);
    return letterOf(bar < 0 ? key : key.sliced(bar + 1));
}

QString NodeKey::problemWith(QByteArrayView key)
{
    if (key.isEmpty())
        return QStringLiteral("it is empty");
    if (key.endsWith(Separator))
        return QStringLiteral("it ends with \u201C|\u201D");
    qsizetype begin = 0;
    bool first = true;
    while (begin <= key.size()) {
        qsizetype end = key.indexOf(Separator, begin);
        if (end < 0)
            end = key.size();
        const QByteArrayView segment = key.sliced(begin, end - begin);
        const QString text = SkinCodec::wordText(segment);
        if (segment.isEmpty())
            return QStringLiteral("it has an empty segment");
        const char letter = segment.front();
        const bool rootLetter = letter == 'T' || letter == 'L' || letter == 'S' || letter == 'U';
        const bool childLetter = letter == 'E' || letter == 'U' || letter == 'P';
        if (first) {
            // A header variable's key has no letter, but begins as a name does.
            const bool nameStart = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z')
                || (letter >= '0' && letter <= '9') || letter == '_';
            if (!nameStart)
                return QStringLiteral("the segment \u201C%1\u201D does not begin with a letter").arg(text);
            if (rootLetter && segment.size() == 1)
                return QStringLiteral("the segment \u201C%1\u201D has no key after its letter").arg(text);
        } else {
            if (!childLetter)
                return QStringLiteral("the segment \u201C%1\u201D does not begin with E, U or P").arg(text);
            if (segment.size() == 1)
                return QStringLiteral("the segment \u201C%1\u201D has no key after its letter").arg(text);
        }
        first = false;
        begin = end + 1;
    }
    return QString();
}
