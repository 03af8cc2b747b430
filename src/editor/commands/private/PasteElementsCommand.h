// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <memory>
#include <vector>

class SkinDocument;
class clsElement;

// New elements made elsewhere (pasted or duplicated), each put at its place
// under the unique key made from its name, so that a name already there is
// numbered as any repeated name is. The first becomes the current node. Undo
// takes them out whole; redo puts the same elements back under the same keys.
class PasteElementsCommand : public QUndoCommand
{
public:
    struct Entry
    {
        // The parent's node key (empty for the document's Layers) and the
        // 0-based place among its children.
        QByteArray parentKey;
        int index = 0;
        std::unique_ptr<clsElement> element;
    };

    PasteElementsCommand(SkinDocument &document, std::vector<Entry> entries, const QString &text);
    ~PasteElementsCommand() override;

    void redo() override;
    void undo() override;

    // The node keys of the new elements (known after the first redo).
    QList<QByteArray> nodeKeys() const { return mNodeKeys; }

private:
    SkinDocument &mDocument;
    std::vector<Entry> mEntries;
    QList<QByteArray> mNodeKeys;
    QByteArray mShownBefore;
    bool mKeyed = false;
};
