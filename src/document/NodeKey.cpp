#include "NodeKey.h"

#include "clsKorviInterface.h"

namespace {

// Skin text reaches the screen as Latin-1: every byte keeps a character of its
// own, so nothing is lost or merged on the way there and back.
QString shown(QByteArrayView bytes)
{
    return QString::fromLatin1(bytes.data(), bytes.size());
}

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
            if (!target.property)
                fail();
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

} // namespace

namespace NodeKey {

char blockLetter(const clsElement &block)
{
    return block.ElementType() == "STATE" ? 'S' : 'L';
}

char childLetter(const clsElement &child)
{
    return child.IsUseLayer() ? 'U' : 'E';
}

NodeTarget ResolveNodeKey(const clsKorviInterface &document, QByteArrayView key)
{
    Walk walk{ document, NodeTarget() };
    if (key.isEmpty())
        return NodeTarget();
    return walkSegments(walk, key);
}

NodeTarget ResolveHeaderNodeKey(const clsKorviInterface &document, QByteArrayView key)
{
    Walk walk{ document, NodeTarget() };
    const qsizetype bar = key.indexOf(Separator);
    const QByteArrayView first = bar < 0 ? key : key.first(bar);
    walk.target.element = document.Headers().Find(first);
    if (!walk.target.element)
        return NodeTarget();
    return walkSegments(walk, bar < 0 ? QByteArrayView() : key.sliced(bar + 1));
}

QString elementText(const clsElement &element)
{
    return shown(element.ElementType()) + QLatin1Char(':') + shown(element.strName());
}

QString propertyText(const clsProperty &property)
{
    const QByteArray name = property.IDKey();
    const QByteArrayView value = property.valueView();
    if (value == clsProperty::noValue())
        return shown(name);
    return shown(name) + QLatin1Char('=') + shown(value);
}

char letterOf(QByteArrayView key)
{
    return key.isEmpty() ? 0 : key.at(0);
}

char ownLetterOf(QByteArrayView key)
{
    const qsizetype bar = key.lastIndexOf(Separator);
    return letterOf(bar < 0 ? key : key.sliced(bar + 1));
}

} // namespace NodeKey
