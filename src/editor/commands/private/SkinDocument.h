// SPDX-License-Identifier: MIT
#pragma once

#include "NodeTarget.h"

#include <QByteArray>
#include <QObject>

#include <functional>
#include <memory>

class QUndoStack;
class SkinCodec;
class clsElement;
class clsElements;
class clsKorviInterface;
struct SkinContext;

// The skin being edited, as the editor sees it: the document, the editor-wide
// values that say where its pictures are, the history of its changes and the
// node the user is working on. It is the only way the editor changes any of
// these, and it tells of every change with a signal that says exactly what
// changed, so that the tree, the canvas and the grid follow on their own.
//
// Places are named by node keys (see NodeKey): an element by its node's key,
// a property by its owner's key and its own collection key; an empty parent
// key stands for the document's Layers.
class SkinDocument : public QObject
{
    Q_OBJECT

public:
    // Both are kept by reference; they belong to the application.
    SkinDocument(clsKorviInterface &document, SkinContext &context, QObject *parent = nullptr);
    ~SkinDocument() override;

    const clsKorviInterface &document() const { return mDocument; }
    const SkinContext &context() const { return mContext; }
    QUndoStack &undoStack() const { return *mUndoStack; }

    // What a key names; a header variable's key (no letter of its own) is
    // tried when the key names nothing else.
    NodeTarget resolve(const QByteArray &nodeKey) const;
    // The element a key names, when it names an element rather than a property.
    clsElement *elementAt(const QByteArray &nodeKey) const;

    // ---- the node being worked on ---------------------------------------------
    QByteArray currentKey() const { return mCurrentKey; }
    void setCurrent(const QByteArray &nodeKey);

    // ---- changes of the document --------------------------------------------------
    // Each returns false, and changes nothing, when a key names nothing.
    // A value set to what it already is changes nothing and tells nobody.
    bool setPropertyValue(const QByteArray &ownerKey, QByteArrayView propertyKey,
                          const QByteArray &value);
    // Appends a property under the unique key made from `name`; its 0-based
    // index, -1 when the owner is not there.
    int addProperty(const QByteArray &ownerKey, QByteArrayView name, const QByteArray &value);
    // Puts a property back at a 0-based index under exactly its own key.
    bool insertProperty(const QByteArray &ownerKey, int index, QByteArrayView key,
                        const QByteArray &value);
    bool removeProperty(const QByteArray &ownerKey, QByteArrayView propertyKey);

    // A new element at the end of the parent's children (of Layers for an empty
    // parent key), under the unique key made from its name.
    clsElement *addElement(const QByteArray &parentKey, const QByteArray &name, const QByteArray &type);
    // Puts an element back at a 0-based index under its own key.
    clsElement *insertElement(const QByteArray &parentKey, int index, std::unique_ptr<clsElement> element);
    // Puts an element made elsewhere (with its children) at a 0-based index,
    // under the unique key made from its name, as a new entry is numbered.
    clsElement *insertNewElement(const QByteArray &parentKey, int index, std::unique_ptr<clsElement> element);
    // Gives the element a new name, keeping its place, its properties and its
    // children; it is stored under `key`, or, when none is given, under the
    // unique key made from the name. Its new node key, empty when the key
    // names no element of a collection or `key` is taken.
    QByteArray renameElement(const QByteArray &nodeKey, const QByteArray &name, const QByteArray &key = {});
    // Takes the element at a 0-based index out, whole with its children.
    std::unique_ptr<clsElement> takeElement(const QByteArray &parentKey, int index);
    // Moves a child from one 0-based place among its siblings to another,
    // keeping its key, its properties and its children: told as its removal
    // and insertion, in one change. False, and nothing moved, for a place
    // that is not there.
    bool moveElement(const QByteArray &parentKey, int from, int to);
    // The collection the children of `parentKey` are stored in.
    clsElements *childrenOf(const QByteArray &parentKey) const;

    // The code page the skin's text is shown and typed in. A new one changes
    // no byte: what shows text is told to show it again.
    void setCodec(const SkinCodec &codec);

    // New editor-wide values (the open file, the skin directory, the format).
    void setContext(const SkinContext &context);

    // Changes made while a batch lives are told as one: each still gives its
    // own signal, but `changed` comes once, when the last batch ends.
    class ChangeBatch
    {
    public:
        explicit ChangeBatch(SkinDocument &document) : mDocument(document) { ++document.mBatchDepth; }
        ~ChangeBatch() { mDocument.endBatch(); }
        ChangeBatch(const ChangeBatch &) = delete;
        ChangeBatch &operator=(const ChangeBatch &) = delete;

    private:
        SkinDocument &mDocument;
    };

    // Replaces the whole document: the history and the current node are
    // forgotten, the document is cleared, `load` fills it, and everybody is
    // told to start over.
    void reload(const std::function<void(clsKorviInterface &document)> &load);

signals:
    // `index` is the property's 0-based place among its owner's properties.
    void propertyChanged(const QByteArray &ownerKey, int index);
    void propertyAdded(const QByteArray &ownerKey, int index);
    void propertyAboutToBeRemoved(const QByteArray &ownerKey, int index);
    void propertyRemoved(const QByteArray &ownerKey, int index);
    // `index` is the element's 0-based place among its parent's children.
    void elementInserted(const QByteArray &parentKey, int index);
    void elementAboutToBeRemoved(const QByteArray &parentKey, int index);
    void elementRemoved(const QByteArray &parentKey, int index);
    // After a change of the document (once after a batch of them): what shows
    // the document may be drawn again.
    void changed();
    void contextChanged();
    void codecChanged();
    void currentChanged(const QByteArray &nodeKey);
    void aboutToBeReset();
    void reset();

private:
    void changeMade();
    void endBatch();

    clsKorviInterface &mDocument;
    SkinContext &mContext;
    std::unique_ptr<QUndoStack> mUndoStack;
    QByteArray mCurrentKey;
    int mBatchDepth = 0;
    bool mBatchChanged = false;
};
