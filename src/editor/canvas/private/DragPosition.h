// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

// The place of an object after a move by (dx, dy) pixels: its current "x" and
// "y" read as leading numbers plus the distance, each a 32-bit signed whole
// number. A sum outside that range gives nothing and the object stays.
struct DragPosition
{
    QByteArray x;
    QByteArray y;

    static std::optional<DragPosition> moved(const QByteArray &currentX, const QByteArray &currentY,
                                             int dx, int dy);
};
