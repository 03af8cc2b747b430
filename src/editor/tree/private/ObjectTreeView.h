// SPDX-License-Identifier: MIT
#pragma once

class ObjectTreeModel;
class QTreeView;

namespace ObjectTreeView {

// The view "tvwObjects" of the object tree: no header, one line per row.
QTreeView *create(ObjectTreeModel &model);

} // namespace ObjectTreeView
