// SPDX-License-Identifier: MIT
#include "clsHeaders.h"

Header *clsHeaders::Add(const QString &Caption, int ColumnWidth, bool Visible,
                        int ColumnDataType, const QString &Key)
{
    auto header = std::make_unique<Header>(this);
    header->Caption = Caption;
    header->ColumnWidth = ColumnWidth;
    header->Visible = Visible;
    header->ColumnDataType = ColumnDataType;
    Header *added = mList.append(std::move(header), Key);
    emit ItemAdded();
    return added;
}
