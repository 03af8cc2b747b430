// SPDX-License-Identifier: MIT
#include "RlHeader.h"

namespace {

quint16 littleEndian16(const QByteArray &bytes, qsizetype offset)
{
    return quint16(uchar(bytes[offset]) | (uchar(bytes[offset + 1]) << 8));
}

} // namespace

bool RlHeader::read(const QByteArray &bytes, RlHeader &header)
{
    if (bytes.size() < kSize)
        return false;
    header.flags = littleEndian16(bytes, 2);
    header.width = littleEndian16(bytes, 4);
    header.height = littleEndian16(bytes, 6);
    header.paletteCount = littleEndian16(bytes, 8);
    header.rowCount = littleEndian16(bytes, 10);
    return true;
}

bool RlHeader::hasMagic(const QByteArray &bytes)
{
    return bytes.startsWith("RL");
}
