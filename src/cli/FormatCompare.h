// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

// korvi render --compare: a skin file drawn in two formats side by side.
namespace FormatCompare {

// The same skin file in the other format: the path with every occurrence of
// the format that stands alone (no digit beside it) renamed, as a port names
// the folders and files it makes ("800_480/ui/main_800_480.ui" gives
// "1024_600/ui/main_1024_600.ui").
QString fileInFormat(const QString &path, const QString &from, const QString &to);

// The two pictures side by side, the first on the left, with a gap between
// them, on a dark ground as high as the higher one.
QImage sideBySide(const QImage &left, const QImage &right);

} // namespace FormatCompare
