// SPDX-License-Identifier: MIT
#pragma once

// korvi's standard output and error carry exactly the bytes it writes, on
// every system: a JSON dump, a report or a picture piped into a file is the
// same file on Windows as on Linux. One file per platform:
// StandardStreams_win.cpp, StandardStreams_unix.cpp.
namespace StandardStreams {

void writeBytesAsTheyAre();

} // namespace StandardStreams
