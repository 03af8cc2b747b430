// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"

#include <QByteArrayView>
#include <QList>

#include <optional>

// Whether a skin's bytes look like another code page than the one they are
// read in: valid multi-byte UTF-8 sequences, or words that read as mixed-up
// letters in the code page given but as words of one script in another
// (Windows-1250, 1251, 1252 or 1253). Only the words holding bytes beyond
// ASCII are looked at, so an ASCII skin never gets a guess.
namespace CodePageGuess {

// The code page the files' bytes look like when it is not `current`.
std::optional<SkinCodec> better(const QList<QByteArrayView> &files, const SkinCodec &current);

} // namespace CodePageGuess
