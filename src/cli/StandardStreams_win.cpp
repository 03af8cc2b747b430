// SPDX-License-Identifier: MIT
#include "StandardStreams.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

#include <cstdio>
#include <fcntl.h>
#include <io.h>

// The C runtime opens them in text mode, which writes every "\n" as "\r\n":
// the information lines, which end in "\r\n" already, would end in "\r\r\n".
void StandardStreams::writeBytesAsTheyAre()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

#endif
