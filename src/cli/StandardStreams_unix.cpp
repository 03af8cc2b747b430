// SPDX-License-Identifier: MIT
#include "StandardStreams.h"

#include <QtGlobal>

#ifndef Q_OS_WIN

// The streams never translate line ends here.
void StandardStreams::writeBytesAsTheyAre()
{
}

// A terminal here reads the locale's encoding (UTF-8 for Qt).
bool StandardStreams::writeText(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    return std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream) == size_t(bytes.size())
        && std::fflush(stream) == 0;
}

#endif
