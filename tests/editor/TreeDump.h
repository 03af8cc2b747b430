// SPDX-License-Identifier: MIT
#pragma once

#include "ObjectTreeModel.h"

#include <QStringList>

// Every node as "indent key | text", depth first, every node unfolded.
inline void dumpTree(const ObjectTreeModel &model, const QModelIndex &parent, int depth, QStringList &lines)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex node = model.index(row, 0, parent);
        lines << QString(depth * 2, QLatin1Char(' ')) + QString::fromLatin1(model.nodeKey(node))
                + QStringLiteral(" | ") + model.nodeText(node);
        dumpTree(model, node, depth + 1, lines);
    }
}
