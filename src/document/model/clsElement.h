// SPDX-License-Identifier: MIT
#pragma once

#include "clsProperties.h"

#include <QByteArray>
#include <memory>

class clsElements;
class PropertyPack;

// One block, entry or child element of a skin: a tag word (its type), a name,
// its properties in file order, and its child elements.
class clsElement
{
public:
    clsElement();
    ~clsElement();
    clsElement(const clsElement &) = delete;
    clsElement &operator=(const clsElement &) = delete;

    // A new element holding the properties of `properties`, whose keys must
    // differ from one another, in the same allocation as itself: a large skin
    // has hundreds of thousands of elements, most of which never change their
    // properties after reading.
    static std::unique_ptr<clsElement> createWith(const PropertyPack &properties);
    // Elements made by createWith() are larger than the class; they are freed
    // the same way as the others.
    static void *operator new(size_t size) { return ::operator new(size); }
    static void operator delete(void *memory) { ::operator delete(memory); }

    clsProperties &Properties() { return mProperties; }
    const clsProperties &Properties() const { return mProperties; }

    // Child elements; the collection is made on first use.
    clsElements &SubElements();
    const clsElements &SubElements() const;
    int subElementCount() const;

    // The tag word, always upper case: the setter upper-cases what it is given.
    QByteArray ElementType() const { return mType; }
    void setElementType(const QByteArray &type);

    // The name as written in the file (may be empty). Renaming keeps the key.
    QByteArray strName() const { return mName; }
    void setStrName(const QByteArray &name);

    // The key under which the owning collection stores this element.
    QByteArray ElementKey() const;
    void setElementKey(const QByteArray &key);

    // Set on template and font-type entries read from another file than the one
    // being edited; such entries are never written back.
    bool IsImported = false;

private:
    // Whether the key is the name itself, as it is for most elements: they
    // then hold no key of their own. Shares the padding after IsImported.
    bool mKeyIsName = false;
    // The number of the file it was read from (SkinSources), 0 when it was
    // made by an edit; in the padding too.
    quint16 mSourceFile = 0;
    // Bytes after the element given to its properties by createWith(); it
    // shares the padding after IsImported too.
    quint32 mInlineBytes = 0;

public:

    bool IsTemplate() const { return mType == "TEMPLATE"; }
    bool IsLayer() const { return mType == "LAYER"; }
    bool IsState() const { return mType == "STATE"; }
    bool IsElementTemplate() const { return mType == "ELEMENT_TEMPLATE"; }
    // A block of Layers that holds objects: a layer, a state, an element
    // template or an observer.
    bool IsBlock() const
    {
        return IsLayer() || IsState() || IsElementTemplate() || mType == "OBSERVER";
    }
    bool IsUseLayer() const { return mType == "USELAYER"; }
    bool IsList() const { return mType == "LIST"; }
    bool IsSprite() const { return mType == "SPRITE"; }
    bool IsText() const { return mType == "TEXT"; }
    bool IsSlider() const { return mType == "SLIDER"; }

    // Where the element was read from: the file's number in the document's
    // SkinSources (0 for an element made by an edit) and its record there.
    int sourceFile() const { return mSourceFile; }
    quint32 sourceRecord() const { return mSourceRecord; }
    // Taking a record says the element is, from now on, what the record's
    // lines say.
    void setSource(int file, quint32 record)
    {
        mSourceFile = quint16(file);
        mSourceRecord = record;
        markSameAsSource();
    }
    // Whether its type, name or properties may have changed since it took its
    // record (or since markSameAsSource()): one that has not is still what its
    // lines in the file say, and saving its file in place passes it by.
    bool changedSinceSource() const { return mChangedSinceSource || mProperties.hasChanged(); }
    // Says the element is again exactly what its record's lines say: after
    // the reader gave it the properties of a further line of its own.
    void markSameAsSource()
    {
        mChangedSinceSource = false;
        mProperties.markUnchanged();
    }

    // The collection this element is stored in (none while it stands alone).
    clsElements *owner() const { return mOwner; }
    // 1-based position in the owning collection, 0 when there is none.
    int Index() const;

    qsizetype memoryUsed() const;
    // The key without a copy, for the owning collection's look-ups.
    QByteArrayView keyView() const
    {
        return mKeyIsName ? QByteArrayView(mName) : mOwnKey ? QByteArrayView(*mOwnKey) : QByteArrayView();
    }

    static QByteArray upperAscii(QByteArray word);

private:
    friend class clsElements;

    clsProperties mProperties;
    std::unique_ptr<clsElements> mSubElements;
    QByteArray mType;
    QByteArray mName;
    // The key, when it is not the name.
    std::unique_ptr<QByteArray> mOwnKey;
    clsElements *mOwner = nullptr;
    quint32 mSourceRecord = 0;
    // A type or name set since the element took its record; in the padding
    // after the record.
    bool mChangedSinceSource = false;
};
