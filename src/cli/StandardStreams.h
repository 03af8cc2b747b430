// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdio>

// korvi's standard output and error carry exactly the bytes it writes, on
// every system: a JSON dump, a report or a picture piped into a file is the
// same file on Windows as on Linux. Text for a person to read is written in
// the terminal's encoding, or, on a Windows console, as its characters. One
// file per platform: StandardStreams_win.cpp, StandardStreams_unix.cpp.
namespace StandardStreams {

void writeBytesAsTheyAre();

// Writes `text` to `stream` (stdout or stderr). A Windows console shows text
// in its own (OEM) code page, not in the system's ANSI one: there the text goes
// to the console as its characters, so that a Cyrillic or Greek word reads
// right whatever the console's code page. Everywhere else, and into a file or
// a pipe, it is written in the terminal's encoding (the ANSI code page on
// Windows). False, with errno set, when the write failed.
bool writeText(std::FILE *stream, const QString &text);

} // namespace StandardStreams
