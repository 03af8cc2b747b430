// SPDX-License-Identifier: MIT
#include "Commands.h"

#include "AsciiCase.h"
#include "ScriptedEdit.h"

// korvi unset FILE.ui NODEKEY KEY... [-o OUT] [--code-page NAME]
int runUnset(const QStringList &arguments)
{
    ScriptedEdit edit(QStringLiteral("unset"), QStringLiteral("korvi unset FILE.ui NODEKEY KEY... [-o OUT]"), 1, -1);
    if (!edit.start(arguments))
        return edit.exitCode();
    clsElement *element = edit.element();
    if (!element)
        return edit.exitCode();
    for (const QString &name : edit.rest()) {
        const QByteArray key = AsciiCase::lowered(ScriptedEdit::wordOf(name));
        if (!element->Properties().ItemExist(key))
            return edit.fail(QStringLiteral("the element has no property %1").arg(name));
        element->Properties().Remove(key);
    }
    return edit.save();
}
