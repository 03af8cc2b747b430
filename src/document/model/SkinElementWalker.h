// SPDX-License-Identifier: MIT
#pragma once

#include "SkinElementWalk.h"

#include <QByteArray>
#include <vector>

class clsElement;
class clsElements;
class clsKorviInterface;

// The walk of SkinElementWalk::forEach, one element at a time, so that a long
// walk can stop and go on later (the editor checks a large skin in slices
// between window events). The walker holds pointers into the document: once
// the document changes, a walker not yet at its end must be dropped.
//
//     SkinElementWalker walker(document);
//     while (walker.next())
//         use(walker.visit());
class SkinElementWalker
{
public:
    explicit SkinElementWalker(const clsKorviInterface &document);

    // Moves to the next element; false once every element has been visited.
    bool next();
    // The element moved to last; valid until the next call of next().
    SkinElementWalk::Visit visit() const { return { *mElement, mKey, mParent }; }

private:
    // The elements of one collection or of one element's children, and how
    // far the walk has come through them.
    struct Level
    {
        const clsElements *elements;
        int index;
        const clsElement *parent;
        QByteArray parentKey;
    };

    bool enterNextCollection();
    QByteArray topKey(const clsElement &element) const;

    const clsKorviInterface &mDocument;
    // Headers, templates, font types, then layers; 4 when all are done.
    int mCollection = 0;
    std::vector<Level> mLevels;
    const clsElement *mElement = nullptr;
    const clsElement *mParent = nullptr;
    QByteArray mKey;
};
