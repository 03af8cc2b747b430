#include "SetPropertyValueCommand.h"

#include "EditSurface.h"
#include "ObjectTreeModel.h"

SetPropertyValueCommand::SetPropertyValueCommand(EditSurface &surface,
                                                 const QByteArray &propertyNodeKey,
                                                 const QByteArray &newValue,
                                                 const QByteArray &shownKey)
    : mSurface(surface)
    , mKey(propertyNodeKey)
    , mNewValue(newValue)
    , mShownKey(shownKey)
    , mShownBefore(surface.selectedNodeKey ? surface.selectedNodeKey() : shownKey)
{
    const NodeTarget target = surface.resolve(propertyNodeKey);
    mValid = target.found && !target.property.isNull();
    if (mValid)
        mOldValue = target.property.value();
    setText(QStringLiteral("Set %1").arg(QString::fromLatin1(target.property.isNull()
                                                                 ? QByteArray()
                                                                 : target.property.Key())));
}

void SetPropertyValueCommand::redo()
{
    apply(mNewValue, mShownKey);
}

void SetPropertyValueCommand::undo()
{
    apply(mOldValue, mShownBefore);
}

void SetPropertyValueCommand::apply(const QByteArray &value, const QByteArray &shownKey)
{
    const NodeTarget target = mSurface.resolve(mKey);
    if (!target.found || target.property.isNull())
        return;
    target.property.setValue(value);
    mSurface.tree.RefreshNodeText(mSurface.node(mKey));
    mSurface.show(shownKey);
}
