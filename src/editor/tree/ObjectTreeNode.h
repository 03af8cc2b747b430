// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <memory>
#include <vector>

class clsElement;

// One node of the object tree. A node knows its element (for a property node:
// the element that owns the property) and its own key segment; the full node key
// is the segments from the top node down. Children are made the first time
// somebody looks at them, so a skin with a hundred thousand objects shows its
// top nodes at once and builds the rest as the user unfolds it.
struct ObjectTreeNode
{
    enum Kind { Root, Headers, Element, Property };

    Kind kind = Root;
    ObjectTreeNode *parent = nullptr;
    clsElement *element = nullptr;
    // "Lui_Main", "EtxtTitle", "Px"; the element's key alone under "HEADERS";
    // "HEADERS" for that node itself.
    QByteArray segment;
    bool childrenMade = false;
    std::vector<std::unique_ptr<ObjectTreeNode>> children;

    // Position among the parent's children, kept up to date on insertion and
    // removal (a parent may have a hundred thousand children).
    int row = 0;

    bool underHeaders() const;
    // Gives the children from `first` on their positions again.
    void renumberChildren(int first);
};
