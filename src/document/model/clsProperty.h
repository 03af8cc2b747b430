// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>

class clsProperties;

// One key/value pair of an element, seen through its collection.
//
// A clsProperty is a light handle (collection + position), not a separate object:
// the properties of an element are stored packed together to keep a large skin's
// document small. A handle stays valid until a property before it is removed.
// It only reads: values are changed through the collection (setValueAt).
class clsProperty
{
public:
    clsProperty() = default;
    clsProperty(const clsProperties *owner, int index) : mOwner(owner), mIndex(index) { }

    bool isNull() const { return mOwner == nullptr; }
    explicit operator bool() const { return !isNull(); }

    QByteArray Key() const;
    // The key without its "[n]" suffix: the text before the first "[".
    QByteArray IDKey() const;
    // The value exactly as read, quotes included, or the no-value marker "<NOV>".
    QByteArray value() const;
    // The value with one enclosing pair of matching quotes removed.
    QByteArray StringValue() const;

    QByteArrayView keyView() const;
    QByteArrayView valueView() const;

    // 1-based position in the collection, as the skin's own names count.
    int Index() const { return mIndex + 1; }
    // 0-based position in the collection, for the program's own code.
    int position() const { return mIndex; }
    const clsProperties *collection() const { return mOwner; }

    // The marker stored for an attribute written without "=" (a bare flag).
    static QByteArray noValue() { return QByteArrayLiteral("<NOV>"); }

    static QByteArray idKeyOf(QByteArrayView key) { return idKeyView(key).toByteArray(); }
    // The same, as a view into the key.
    static QByteArrayView idKeyView(QByteArrayView key);
    static QByteArray stringValueOf(QByteArrayView value);

private:
    const clsProperties *mOwner = nullptr;
    int mIndex = -1;
};
