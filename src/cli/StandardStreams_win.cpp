// SPDX-License-Identifier: MIT
#include "StandardStreams.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

#include <qt_windows.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <io.h>

namespace {

// The console `stream` writes to, or null when it goes to a file or a pipe.
HANDLE consoleOf(std::FILE *stream)
{
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    if (handle == INVALID_HANDLE_VALUE || !GetConsoleMode(handle, &mode))
        return nullptr;
    return handle;
}

bool writeToConsole(HANDLE console, const QString &text)
{
    const auto *characters = reinterpret_cast<const wchar_t *>(text.utf16());
    qsizetype left = text.size();
    while (left > 0) {
        // Old consoles refuse one very long write.
        const DWORD chunk = DWORD(std::min<qsizetype>(left, 8192));
        DWORD written = 0;
        if (!WriteConsoleW(console, characters, chunk, &written, nullptr) || written == 0) {
            errno = EIO;
            return false;
        }
        characters += written;
        left -= qsizetype(written);
    }
    return true;
}

} // namespace

// The C runtime opens them in text mode, which writes every "\n" as "\r\n":
// the information lines, which end in "\r\n" already, would end in "\r\r\n".
void StandardStreams::writeBytesAsTheyAre()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool StandardStreams::writeText(std::FILE *stream, const QString &text)
{
    if (const HANDLE console = consoleOf(stream)) {
        // What the stream holds goes first, in its place.
        if (std::fflush(stream) != 0)
            return false;
        return writeToConsole(console, text);
    }
    const QByteArray bytes = text.toLocal8Bit();
    return std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream) == size_t(bytes.size())
        && std::fflush(stream) == 0;
}

#endif
