// SPDX-License-Identifier: MIT
#include "DragPosition.h"

#include "SkinNumber.h"

#include <limits>

namespace {

std::optional<qint64> sum32(const QByteArray &current, int delta)
{
    const qint64 start = SkinNumber::leadingInteger(current);
    if (start > std::numeric_limits<qint32>::max() || start < std::numeric_limits<qint32>::min())
        return std::nullopt;
    const qint64 total = start + delta;
    if (total > std::numeric_limits<qint32>::max() || total < std::numeric_limits<qint32>::min())
        return std::nullopt;
    return total;
}

} // namespace

std::optional<DragPosition> DragPosition::moved(const QByteArray &currentX, const QByteArray &currentY,
                                                int dx, int dy)
{
    const std::optional<qint64> x = sum32(currentX, dx);
    const std::optional<qint64> y = sum32(currentY, dy);
    if (!x || !y)
        return std::nullopt;
    return DragPosition { QByteArray::number(*x), QByteArray::number(*y) };
}
