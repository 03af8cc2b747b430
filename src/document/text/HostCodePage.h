// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

// What the host system knows about code pages: which one it reads 8-bit text
// in, and its own converter for the double-byte code pages (Windows' code
// page functions on Windows; Qt's converter, ICU where Qt has it, elsewhere).
// One file per host: HostCodePage_win.cpp, HostCodePage_unix.cpp.
namespace HostCodePage {

// The number of the system's ANSI code page (1251 on a Russian Windows);
// 1252 on hosts without one.
int ansiCodePage();

// Whether the host converts the Windows code page `number`, known to others
// by `ianaNames`.
bool canConvert(int number, const QStringList &ianaNames);
// `bytes` read in code page `number`; nothing when the host cannot.
std::optional<QString> decode(int number, const QStringList &ianaNames, QByteArrayView bytes);
// `text` written in code page `number`; nothing when the host cannot convert
// it or a character of it has no bytes there.
std::optional<QByteArray> encode(int number, const QStringList &ianaNames, QStringView text);

} // namespace HostCodePage
