// SPDX-License-Identifier: MIT
#include "ObjectTreeView.h"

#include "ObjectTreeModel.h"

#include <QTreeView>

namespace ObjectTreeView {

QTreeView *create(ObjectTreeModel &model)
{
    auto *view = new QTreeView;
    view->setObjectName(QStringLiteral("tvwObjects"));
    view->setHeaderHidden(true);
    // Every row is one line high: the view need not measure a hundred thousand
    // rows to place its scroll bar.
    view->setUniformRowHeights(true);
    view->setModel(&model);
    return view;
}

} // namespace ObjectTreeView
