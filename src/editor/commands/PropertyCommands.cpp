// SPDX-License-Identifier: MIT
#include "SkinCodec.h"
#include "PropertyCommands.h"

#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsElement.h"

AddPropertyCommand::AddPropertyCommand(SkinDocument &document, const QByteArray &ownerNodeKey,
                                       const QByteArray &name, const QByteArray &value)
    : mDocument(document)
    , mOwnerKey(ownerNodeKey)
    , mName(name)
    , mValue(value)
    , mShownBefore(document.currentKey())
{
    setText(QStringLiteral("Add property %1").arg(SkinCodec::wordText(name)));
}

void AddPropertyCommand::redo()
{
    if (mKey.isEmpty()) {
        mIndex = mDocument.addProperty(mOwnerKey, mName, mValue);
        if (mIndex >= 0)
            mKey = mDocument.elementAt(mOwnerKey)->Properties().keyAt(mIndex).toByteArray();
    } else if (!mDocument.insertProperty(mOwnerKey, mIndex, mKey, mValue)) {
        mIndex = -1;
    }
    if (mIndex < 0) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mOwnerKey);
}

void AddPropertyCommand::undo()
{
    mDocument.setCurrent(mShownBefore);
    if (!mDocument.removeProperty(mOwnerKey, mKey))
        setObsolete(true);
}

RemovePropertyCommand::RemovePropertyCommand(SkinDocument &document, const QByteArray &propertyNodeKey)
    : mDocument(document)
    , mShownBefore(document.currentKey())
{
    const NodeTarget target = document.resolve(propertyNodeKey);
    if (!target.found || target.property.isNull())
        return;
    mOwnerKey = NodeKey(propertyNodeKey).parent();
    mKey = target.property.Key();
    mValue = target.property.value();
    mIndex = target.property.position();
    setText(QStringLiteral("Remove property %1").arg(SkinCodec::wordText(mKey)));
}

void RemovePropertyCommand::redo()
{
    mDocument.setCurrent(mOwnerKey);
    if (!isValid() || !mDocument.removeProperty(mOwnerKey, mKey))
        setObsolete(true);
}

void RemovePropertyCommand::undo()
{
    if (!mDocument.insertProperty(mOwnerKey, mIndex, mKey, mValue)) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(mShownBefore);
}
