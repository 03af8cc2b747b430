// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

class Dialogs;

// File > Export Picture: the canvas's picture, at the skin's own pixels,
// written as a PNG file the user chooses.
namespace PictureExport {

// Asks for the file, proposing `proposedPath` (and, when it exists, whether
// to overwrite it) and writes the picture; a failure is told in a message.
// True when the file was written.
bool ask(Dialogs &dialogs, const QImage &picture, const QString &proposedPath);

} // namespace PictureExport
