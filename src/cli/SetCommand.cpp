// SPDX-License-Identifier: MIT
#include "Commands.h"

#include "AsciiCase.h"
#include "CommandLine.h"
#include "NameWord.h"
#include "ScriptedEdit.h"
#include "ValueSpelling.h"

// korvi set FILE.ui NODEKEY KEY=VALUE... [-o OUT] [--code-page NAME]
int runSet(const QStringList &arguments)
{
    ScriptedEdit edit(QStringLiteral("set"), QStringLiteral("korvi set FILE.ui NODEKEY KEY=VALUE... [-o OUT]"), 1, -1);
    if (!edit.start(arguments))
        return edit.exitCode();
    for (const QString &assignment : edit.rest()) {
        if (!assignment.contains(QLatin1Char('=')))
            return CommandLine::usageError(QStringLiteral("\"%1\" is not KEY=VALUE").arg(assignment));
    }
    clsElement *element = edit.element();
    if (!element)
        return edit.exitCode();
    for (const QString &assignment : edit.rest()) {
        const qsizetype equals = assignment.indexOf(QLatin1Char('='));
        // Keys are lower case in a document, as the reader keeps them.
        const QString keyText = assignment.left(equals);
        const QByteArray key = AsciiCase::lowered(ScriptedEdit::wordOf(keyText));
        // The terminal's text, stored in the skin's code page.
        const ValueSpelling::Result value = ValueSpelling::ofText(assignment.mid(equals + 1), edit.document().codec());
        if (!value.ok())
            return edit.fail(value.problem);
        clsProperties &properties = element->Properties();
        if (const int index = properties.indexOf(key); index >= 0) {
            properties.setValueAt(index, value.spelling);
            continue;
        }
        // Only a plain key is added: "x[0]" addresses one of repeated keys.
        const QString problem = NameWord::problemWithKey(keyText);
        if (!problem.isEmpty())
            return edit.fail(problem);
        properties.Add(key, value.spelling);
    }
    return edit.save();
}
