// SPDX-License-Identifier: MIT
#include "ObjectTreeNode.h"

bool ObjectTreeNode::underHeaders() const
{
    for (const ObjectTreeNode *n = parent; n; n = n->parent) {
        if (n->kind == Headers)
            return true;
    }
    return false;
}

void ObjectTreeNode::renumberChildren(int first)
{
    for (size_t i = size_t(first); i < children.size(); ++i)
        children[i]->row = int(i);
}
