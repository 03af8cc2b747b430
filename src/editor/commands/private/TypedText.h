// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class Dialogs;

// What the user types becomes document bytes here, and only here: a value is
// stored in the spelling that reads back as typed, a name or a key must be a
// name word. Anything that cannot be stored is refused with a message and
// gives nothing, so the caller changes nothing.
namespace TypedText {

// The bytes to store for a typed value.
std::optional<QByteArray> value(Dialogs &dialogs, const QString &typed);
// The bytes of a typed element or layer name.
std::optional<QByteArray> name(Dialogs &dialogs, const QString &typed);
// The bytes of a typed property key, lower-cased as keys are kept.
std::optional<QByteArray> key(Dialogs &dialogs, const QString &typed);

// The typed text as document bytes; nothing when a character has no byte.
std::optional<QByteArray> bytesOf(const QString &typed);

} // namespace TypedText
