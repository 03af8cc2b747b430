// SPDX-License-Identifier: MIT
#include "HostCodePage.h"

#ifndef Q_OS_WIN

#include <QStringDecoder>
#include <QStringEncoder>

// Hosts other than Windows have no system code page for skins: Windows-1252,
// and Qt's converter (which knows the double-byte code pages when Qt is built
// with ICU) under any of the code page's names.
namespace HostCodePage {

namespace {

std::optional<QByteArray> knownName(const QStringList &ianaNames)
{
    for (const QString &name : ianaNames) {
        const QByteArray ascii = name.toLatin1();
        if (QStringDecoder(ascii.constData()).isValid())
            return ascii;
    }
    return std::nullopt;
}

} // namespace

int ansiCodePage()
{
    return 1252;
}

bool canConvert(int, const QStringList &ianaNames)
{
    return knownName(ianaNames).has_value();
}

std::optional<QString> decode(int, const QStringList &ianaNames, QByteArrayView bytes)
{
    const std::optional<QByteArray> name = knownName(ianaNames);
    if (!name)
        return std::nullopt;
    QStringDecoder decoder(name->constData(), QStringConverter::Flag::Stateless);
    return QString(decoder.decode(bytes));
}

std::optional<QByteArray> encode(int number, const QStringList &ianaNames, QStringView text)
{
    const std::optional<QByteArray> name = knownName(ianaNames);
    if (!name)
        return std::nullopt;
    QStringEncoder encoder(name->constData(), QStringConverter::Flag::Stateless);
    const QByteArray bytes = encoder.encode(text);
    // The converter puts a substitute for a character it cannot write, and
    // says so only sometimes: the bytes must read back as the text.
    if (encoder.hasError() || decode(number, ianaNames, bytes) != text.toString())
        return std::nullopt;
    return bytes;
}

} // namespace HostCodePage

#endif
