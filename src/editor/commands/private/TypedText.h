// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class Dialogs;
class SkinCodec;

// What the user types becomes document bytes here, and only here: a value is
// stored in the skin's code page, in the spelling that reads back as typed (a
// value with letters outside ASCII always in quotes); a name or a key must be
// a name word of ASCII letters. Anything that cannot be stored is refused with
// a message and gives nothing, so the caller changes nothing.
namespace TypedText {

// The bytes to store for a typed value, in `codec`.
std::optional<QByteArray> value(Dialogs &dialogs, const QString &typed, const SkinCodec &codec);
// The bytes of a typed element or layer name.
std::optional<QByteArray> name(Dialogs &dialogs, const QString &typed);
// The bytes of a typed property key, lower-cased as keys are kept.
std::optional<QByteArray> key(Dialogs &dialogs, const QString &typed);

} // namespace TypedText
