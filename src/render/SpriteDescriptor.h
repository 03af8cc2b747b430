// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

// The small text file (.spr) that goes with a sprite picture. Only two kinds of
// line matter:
// - a line containing "Stripes" (any ASCII case): the stripe value is the number
//   after the line's first "=" (from the start of the line when it has none),
//   rounded half to even; the last such line wins;
// - a line containing both "DefFlags" and "GRAB_CENTER" (any ASCII case): the
//   grab-centre flag is set.
// Lines are cut as in .ui files: CR LF, LF and a lone CR all end a line.
struct SpriteDescriptor
{
    qint32 Stripes = 0;
    bool GrabCenter = false;

    static SpriteDescriptor fromBytes(const QByteArray &bytes);
    // A file that cannot be read gives the defaults.
    static SpriteDescriptor readFile(const QString &path);
};
