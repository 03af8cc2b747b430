// SPDX-License-Identifier: MIT
#include "Commands.h"

#include "ScriptedEdit.h"

// korvi remove FILE.ui NODEKEY [-o OUT] [--code-page NAME]
int runRemove(const QStringList &arguments)
{
    ScriptedEdit edit(QStringLiteral("remove"), QStringLiteral("korvi remove FILE.ui NODEKEY [-o OUT]"), 0, 0);
    if (!edit.start(arguments))
        return edit.exitCode();
    clsElement *element = edit.element();
    if (!element)
        return edit.exitCode();
    // The element goes with its children.
    element->owner()->removeAt(element->owner()->positionOf(element));
    return edit.save();
}
