// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

// One skin picture file brought to another screen: decoded, resized frame by
// frame (PictureScaler) and written again in its own kind. An RL picture stays
// RL with the same palette form, a BMP stays a BMP at its bit depth where the
// new pixels allow it, a JPEG stays a JPEG (quality 92).
struct PicturePort
{
    struct Request
    {
        QString path; // for its extension and the messages
        QByteArray bytes;
        double sx = 1;
        double sy = 1;
        // Frames stacked from top to bottom, each resized on its own.
        int frames = 1;
        // A sprite descriptor's stripe height, when 1 or more: the frames are
        // that high (this wins over `frames` when it divides the picture).
        int stripes = 0;
        // When valid: the resized picture is centred on a canvas of this size
        // (a background fitted to a screen of another shape).
        QSize canvas;
        // Only the new size is wanted (a dry run): nothing is encoded.
        bool sizeOnly = false;
    };
    struct Result
    {
        QByteArray bytes;
        QString kind; // "BM", "JPEG", "RL"
        QSize from;
        QSize to;
        int frames = 1;
        // Worth a look, but done: a bit depth that changed, frames that did
        // not divide the picture.
        QString note;
        QString noteKind;
        // Nothing could be made.
        QString error;
    };

    // The new size of a frame: each side scaled and rounded, at least 1.
    static QSize frameSizeFor(QSize frame, double sx, double sy);
    static Result port(const Request &request);
};
