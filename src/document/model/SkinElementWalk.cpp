// SPDX-License-Identifier: MIT
#include "SkinElementWalk.h"

#include "SkinElementWalker.h"

namespace SkinElementWalk {

void forEach(const clsKorviInterface &document, const std::function<void(const Visit &)> &visit)
{
    SkinElementWalker walker(document);
    while (walker.next())
        visit(walker.visit());
}

} // namespace SkinElementWalk
