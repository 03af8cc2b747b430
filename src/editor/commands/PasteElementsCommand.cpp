// SPDX-License-Identifier: MIT
#include "PasteElementsCommand.h"

#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsElement.h"

PasteElementsCommand::PasteElementsCommand(SkinDocument &document, std::vector<Entry> entries,
                                           const QString &text)
    : mDocument(document)
    , mEntries(std::move(entries))
    , mShownBefore(document.currentKey())
{
    setText(text);
}

PasteElementsCommand::~PasteElementsCommand() = default;

void PasteElementsCommand::redo()
{
    mNodeKeys.clear();
    {
        SkinDocument::ChangeBatch batch(mDocument);
        for (Entry &entry : mEntries) {
            std::unique_ptr<clsElement> element = std::move(entry.element);
            const clsElement *inserted = mKeyed
                ? mDocument.insertElement(entry.parentKey, entry.index, std::move(element))
                : mDocument.insertNewElement(entry.parentKey, entry.index, std::move(element));
            if (!inserted) {
                setObsolete(true);
                return;
            }
            const NodeKey parent(entry.parentKey);
            mNodeKeys << (parent.isEmpty() ? NodeKey::block(*inserted) : parent.child(*inserted)).bytes();
        }
    }
    mKeyed = true;
    if (!mNodeKeys.isEmpty())
        mDocument.setCurrent(mNodeKeys.first());
}

void PasteElementsCommand::undo()
{
    mDocument.setCurrent(mShownBefore);
    SkinDocument::ChangeBatch batch(mDocument);
    for (auto it = mEntries.rbegin(); it != mEntries.rend(); ++it) {
        it->element = mDocument.takeElement(it->parentKey, it->index);
        if (!it->element)
            setObsolete(true);
    }
}
