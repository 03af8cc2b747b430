// SPDX-License-Identifier: MIT
#include "HostCodePage.h"

#ifdef Q_OS_WIN

#include <qt_windows.h>

// Windows knows its ANSI code page and converts every code page installed on
// it with its own functions, whatever converter Qt was built with.
namespace HostCodePage {

int ansiCodePage()
{
    return int(GetACP());
}

bool canConvert(int number, const QStringList &)
{
    return IsValidCodePage(UINT(number)) != 0;
}

std::optional<QString> decode(int number, const QStringList &names, QByteArrayView bytes)
{
    if (!canConvert(number, names))
        return std::nullopt;
    if (bytes.isEmpty())
        return QString();
    const int length = MultiByteToWideChar(UINT(number), 0, bytes.data(), int(bytes.size()), nullptr, 0);
    if (length <= 0)
        return std::nullopt;
    QString text(length, Qt::Uninitialized);
    MultiByteToWideChar(UINT(number), 0, bytes.data(), int(bytes.size()),
                        reinterpret_cast<wchar_t *>(text.data()), length);
    return text;
}

std::optional<QByteArray> encode(int number, const QStringList &names, QStringView text)
{
    if (!canConvert(number, names))
        return std::nullopt;
    if (text.isEmpty())
        return QByteArray();
    const auto *wide = reinterpret_cast<const wchar_t *>(text.utf16());
    BOOL usedDefault = FALSE;
    const int length = WideCharToMultiByte(UINT(number), WC_NO_BEST_FIT_CHARS, wide, int(text.size()),
                                           nullptr, 0, nullptr, &usedDefault);
    if (length <= 0 || usedDefault)
        return std::nullopt;
    QByteArray bytes(length, Qt::Uninitialized);
    WideCharToMultiByte(UINT(number), WC_NO_BEST_FIT_CHARS, wide, int(text.size()), bytes.data(), length,
                        nullptr, &usedDefault);
    if (usedDefault)
        return std::nullopt;
    return bytes;
}

} // namespace HostCodePage

#endif
