// SPDX-License-Identifier: MIT
#include "SkinCodec.h"
#include "ChangeValueCommand.h"

#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsElement.h"

ChangeValueCommand::ChangeValueCommand(SkinDocument &document, const QByteArray &ownerKey,
                                       const QList<Value> &values, const QByteArray &shownKey,
                                       const Options &options)
    : mDocument(document)
    , mOwnerKey(ownerKey)
    , mShownKey(shownKey)
    , mShownBefore(document.currentKey())
    , mOptions(options)
{
    for (const Value &value : values)
        mChanges << Change{ value.key, value.newValue, {}, false, false };
}

void ChangeValueCommand::redo()
{
    bool changed = false;
    if (mDocument.elementAt(mOwnerKey)) {
        const SkinDocument::ChangeBatch batch(mDocument);
        for (Change &change : mChanges)
            changed = apply(change) || changed;
    }
    if (!changed) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mShownKey);
}

void ChangeValueCommand::undo()
{
    // The last change is taken back first, so that properties added by the
    // command go in the reverse order of their coming.
    bool restored = false;
    {
        const SkinDocument::ChangeBatch batch(mDocument);
        for (auto it = mChanges.crbegin(); it != mChanges.crend(); ++it)
            restored = restore(*it) || restored;
    }
    // The element is gone: there is nothing left to take back.
    if (!restored) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mShownBefore);
}

bool ChangeValueCommand::apply(Change &change)
{
    const clsElement *owner = mDocument.elementAt(mOwnerKey);
    const int index = owner->Properties().indexOf(change.key);
    if (!change.known) {
        change.known = true;
        change.added = index < 0;
        change.oldValue = index < 0 ? QByteArray() : owner->Properties().valueAt(index).toByteArray();
    }
    if (index >= 0) {
        const bool differs = owner->Properties().valueAt(index) != change.newValue;
        return mDocument.setPropertyValue(mOwnerKey, change.key, change.newValue) && differs;
    }
    return mOptions.addMissing && change.added && mDocument.addProperty(mOwnerKey, change.key, change.newValue) >= 0;
}

bool ChangeValueCommand::restore(const Change &change)
{
    if (!change.known)
        return false;
    if (change.added)
        return mDocument.removeProperty(mOwnerKey, change.key);
    return mDocument.setPropertyValue(mOwnerKey, change.key, change.oldValue);
}

bool ChangeValueCommand::changesNothing() const
{
    for (const Change &change : mChanges) {
        if (change.added || change.newValue != change.oldValue)
            return false;
    }
    return true;
}

bool ChangeValueCommand::mergeWith(const QUndoCommand *other)
{
    const auto *next = dynamic_cast<const ChangeValueCommand *>(other);
    if (!next || next->id() != id() || next->mOwnerKey != mOwnerKey
        || next->mChanges.size() != mChanges.size())
        return false;
    for (int i = 0; i < mChanges.size(); ++i) {
        if (next->mChanges.at(i).key != mChanges.at(i).key)
            return false;
    }
    const qint64 gap = next->mOptions.timeMs - mOptions.timeMs;
    if (mOptions.mergeWindowMs >= 0 && (gap < 0 || gap > mOptions.mergeWindowMs))
        return false;
    for (int i = 0; i < mChanges.size(); ++i)
        mChanges[i].newValue = next->mChanges.at(i).newValue;
    mOptions.timeMs = next->mOptions.timeMs;
    mShownKey = next->mShownKey;
    // Back where it started: the step is no change at all.
    setObsolete(changesNothing());
    return true;
}

namespace {

ChangeValueCommand::Options setValueOptions()
{
    ChangeValueCommand::Options options{ UndoCommandId::SetPropertyValue };
    return options;
}

} // namespace

SetPropertyValueCommand::SetPropertyValueCommand(SkinDocument &document, const QByteArray &propertyNodeKey,
                                                 const QByteArray &newValue, const QByteArray &shownKey)
    : ChangeValueCommand(document, NodeKey(propertyNodeKey).parent(),
                         { { NodeKey(propertyNodeKey).propertyKey(), newValue } }, shownKey, setValueOptions())
{
    setText(QStringLiteral("Set %1").arg(SkinCodec::wordText(NodeKey(propertyNodeKey).propertyKey())));
}

MoveElementCommand::MoveElementCommand(SkinDocument &document, const QByteArray &elementNodeKey,
                                       const QByteArray &newX, const QByteArray &newY, qint64 timeMs)
    : ChangeValueCommand(document, elementNodeKey,
                         { { QByteArrayLiteral("x"), newX }, { QByteArrayLiteral("y"), newY } }, elementNodeKey,
                         { UndoCommandId::MoveElement, true, MergeWindowMs, timeMs })
{
    const clsElement *element = document.elementAt(elementNodeKey);
    setText(QStringLiteral("Move %1").arg(element ? SkinCodec::wordText(element->strName()) : QString()));
}
