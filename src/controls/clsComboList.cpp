// SPDX-License-Identifier: MIT
#include "clsComboList.h"

ComboItem *clsComboList::Add(const QString &Text, const QString &Key)
{
    auto item = std::make_unique<ComboItem>();
    item->strText = Text;
    item->Key = Key;
    return mList.append(std::move(item), Key);
}

QString clsComboList::ItemText(const QString &Key) const
{
    const ComboItem *item = mList.find(Key);
    return item ? item->strText : QString();
}

QString clsComboList::ItemKey(int ListIndex) const
{
    for (const ComboItem *item : mList)
        if (item->ComboListIndex == ListIndex)
            return item->Key;
    return QString();
}
