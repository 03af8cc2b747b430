// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

class clsElement;
class clsKorviInterface;

// The values an object takes from its templates and font types without having
// them itself: what the renderer reads for a name the object lacks. The chains
// are walked as the renderer walks them (every "template" link in order, each
// chain to its end or until it comes back to an entry seen, then the "fonttype"
// links the same way), and a name counts once, from the first entry that has it.
class InheritedValues
{
public:
    struct Value
    {
        QByteArray name;
        QByteArray value;
        // The name of the template or font type it comes from.
        QByteArray from;
    };

    // In the order they are first met; names the object has itself are left out.
    static QList<Value> of(const clsKorviInterface &document, const clsElement &element);
    // Whether the chains give a value for `name`, whether or not the object
    // has one itself: without its own, the object would take that one.
    static bool givenFor(const clsKorviInterface &document, const clsElement &element, QByteArrayView name);
};
