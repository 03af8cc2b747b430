// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"

#include <QByteArray>
#include <QString>

// How a value typed by the user is stored, so that reading the saved file
// gives the same value: as typed when the reader reads "key=VALUE" back as
// exactly VALUE (also with another attribute after it); otherwise in double
// quotes; in single quotes when it holds a double quote. A value with both
// kinds of quotes, or with a line feed, has no spelling that reads back; a CR
// inside quotes is where a quoted value runs on to the next line.
class ValueSpelling
{
public:
    // The bytes to store for `typed`; empty `problem` when there is a spelling.
    struct Result
    {
        QByteArray spelling;
        QString problem;
        bool ok() const { return problem.isEmpty(); }
    };
    // Problems quote the value in `codec`, the skin's code page.
    static Result of(const QByteArray &typed, const SkinCodec &codec);
    // The same for text typed by the user: written in `codec` first, or
    // refused when a character of it has no byte there.
    static Result ofText(const QString &typed, const SkinCodec &codec);

    // Whether the reader reads "key=VALUE" back as exactly `value`, at the end
    // of a line and before another attribute.
    static bool readsBack(const QByteArray &value);
    // Whether `text` kept as a line of a script block reads back as itself.
    static bool readsBackAsScriptLine(const QByteArray &text);
};
