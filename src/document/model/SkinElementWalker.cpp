// SPDX-License-Identifier: MIT
#include "SkinElementWalker.h"

#include "NodeKey.h"
#include "clsKorviInterface.h"

namespace {

enum Collection { HeaderVariables, Templates, FontTypes, Layers, Done };

} // namespace

SkinElementWalker::SkinElementWalker(const clsKorviInterface &document)
    : mDocument(document)
{
}

bool SkinElementWalker::next()
{
    // Each element comes before its children.
    if (mElement && mElement->subElementCount() > 0)
        mLevels.push_back({ &mElement->SubElements(), 0, mElement, mKey });
    for (;;) {
        if (mLevels.empty() && !enterNextCollection()) {
            mElement = nullptr;
            return false;
        }
        Level &level = mLevels.back();
        if (level.index >= level.elements->Count()) {
            mLevels.pop_back();
            continue;
        }
        mElement = level.elements->at(level.index++);
        mParent = level.parent;
        if (!mParent)
            mKey = topKey(*mElement);
        else if (level.parentKey.isEmpty()) // under an element without a node, none has one
            mKey.clear();
        else
            mKey = level.parentKey + NodeKey::Separator + NodeKey::childLetter(*mElement) + mElement->ElementKey();
        return true;
    }
}

bool SkinElementWalker::enterNextCollection()
{
    if (mCollection >= Done)
        return false;
    const int collection = mCollection++;
    const clsElements &elements = collection == HeaderVariables ? mDocument.Headers()
        : collection == Templates                               ? mDocument.Templates()
        : collection == FontTypes                               ? mDocument.Fonts()
                                                                : mDocument.Layers();
    mLevels.push_back({ &elements, 0, nullptr, QByteArray() });
    return true;
}

QByteArray SkinElementWalker::topKey(const clsElement &element) const
{
    switch (mCollection - 1) {
    case HeaderVariables:
        return element.ElementKey();
    case Templates:
        return 'T' + element.ElementKey();
    case FontTypes: // font types have no node in the tree
        return QByteArray();
    default:
        return NodeKey::blockLetter(element) + element.ElementKey();
    }
}
