// SPDX-License-Identifier: MIT
#include "SkinCodec.h"
#include "RenameElementCommand.h"

#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsElements.h"

RenameElementCommand::RenameElementCommand(SkinDocument &document, const QByteArray &elementNodeKey,
                                           const QByteArray &name)
    : mDocument(document)
    , mNodeKey(elementNodeKey)
    , mName(name)
{
    const clsElement *element = document.elementAt(elementNodeKey);
    const clsElements *collection = document.childrenOf(NodeKey(elementNodeKey).parent());
    // A used layer's key names the layer it uses, which lives elsewhere.
    if (!element || !collection || collection->positionOf(element) < 0)
        return;
    mOldName = element->strName();
    mOldKey = element->ElementKey();
    setText(QStringLiteral("Rename %1 to %2").arg(SkinCodec::wordText(mOldName), SkinCodec::wordText(name)));
}

void RenameElementCommand::redo()
{
    mNewNodeKey = isValid() ? mDocument.renameElement(mNodeKey, mName, mNewKey) : QByteArray();
    if (mNewNodeKey.isEmpty()) {
        setObsolete(true);
        return;
    }
    mNewKey = mDocument.elementAt(mNewNodeKey)->ElementKey();
    mDocument.setCurrent(mNewNodeKey);
}

void RenameElementCommand::undo()
{
    const QByteArray back = mDocument.renameElement(mNewNodeKey, mOldName, mOldKey);
    if (back.isEmpty()) {
        setObsolete(true);
        return;
    }
    mDocument.setCurrent(back);
}
