// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>

// A skin format names a screen as width, "_", height: the name of a skin's
// resolution folder ("800_480", "1024_600"). Every place that takes a format
// from a file or folder name goes through here.
namespace SkinFormatName {

// The format at the end of a name (no folder, no extension): eight characters
// "####_###" when the name ends so, else seven "###_###"; empty when neither.
// The four-digit form is tried first, so "main_1024_600" gives "1024_600"
// (and not "024_600"), while names with a three-digit width give what they
// always gave.
QString fromName(const QString &stem);
// The same for a path: the file name without folder and extension (the
// extension is only the part after the last dot).
QString fromFileName(const QString &path);
// Whether the whole text is a format of either form.
bool isFormat(const QString &text);
// The screen size a format names; invalid for text that is no format.
QSize sizeOf(const QString &format);
// "W_H" for a size (three digits of width or more).
QString ofSize(QSize size);

} // namespace SkinFormatName
