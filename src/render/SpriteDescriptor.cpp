// SPDX-License-Identifier: MIT
#include "SpriteDescriptor.h"

#include "SkinNumber.h"
#include "UiFileReader.h"

#include "FileReading.h"

#include <QFile>
#include <algorithm>
#include <limits>

namespace {

bool containsAsciiCaseless(QByteArrayView line, QByteArrayView word)
{
    return line.toByteArray().toLower().contains(word.toByteArray().toLower());
}

qint32 toInt32(qint64 value)
{
    return qint32(std::clamp<qint64>(value, std::numeric_limits<qint32>::min(),
                                     std::numeric_limits<qint32>::max()));
}

// The number after the first "="; a line without "=" is read from its start.
qint32 stripeValue(QByteArrayView line)
{
    const qsizetype equals = line.indexOf('=');
    return toInt32(SkinNumber::leadingInteger(line.sliced(equals + 1)));
}

} // namespace

SpriteDescriptor SpriteDescriptor::fromBytes(const QByteArray &bytes)
{
    SpriteDescriptor descriptor;
    const auto lines = UiFileReader::splitLines(bytes);
    for (const UiFileReader::LineSpan &span : lines) {
        const QByteArrayView line(bytes.constData() + span.offset, span.length);
        if (containsAsciiCaseless(line, "Stripes"))
            descriptor.Stripes = stripeValue(line);
        if (containsAsciiCaseless(line, "DefFlags") && containsAsciiCaseless(line, "GRAB_CENTER"))
            descriptor.GrabCenter = true;
    }
    return descriptor;
}

SpriteDescriptor SpriteDescriptor::readFile(const QString &path)
{
    QByteArray bytes;
    QString error;
    if (!FileReading::readWhole(path, bytes, error))
        return SpriteDescriptor();
    return fromBytes(bytes);
}
