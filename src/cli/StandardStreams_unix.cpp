// SPDX-License-Identifier: MIT
#include "StandardStreams.h"

#include <QtGlobal>

#ifndef Q_OS_WIN

// The streams never translate line ends here.
void StandardStreams::writeBytesAsTheyAre()
{
}

#endif
