// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

struct PictureProblem;

// Loads a skin picture into the off-screen buffer. Transparent areas are magenta
// (255, 0, 255); the buffer is always QImage::Format_RGB32 (or null).
class ImageLoader
{
public:
    // Clears the buffer and loads the picture at `path` into it; returns the
    // picture's size in pixels (the buffer's scale size). An RL picture can have
    // one side 0, which a QImage cannot hold: the size says so while the buffer
    // is null.
    // - empty path: the built-in 100 x 50 placeholder ("missing picture");
    // - extension "jpg": Qt's JPEG reader; a failure leaves the buffer cleared;
    // - otherwise the first two bytes decide: "BM" Qt's BMP reader, "RL" the
    //   run-length decoder, anything else loads nothing.
    static QSize LoadImageFile(const QString &path, QImage &buffer);

    // The same, for a file already read into memory (`path` gives the extension).
    static QSize LoadImageBytes(const QString &path, const QByteArray &bytes, QImage &buffer);

    // Both again, saying in `problem` what is wrong with a file that was found
    // but gives no picture, or only part of one: an empty or unreadable file,
    // content that is no picture, a BMP or JPEG that cannot be decoded, an RL
    // picture cut short or with an absurd size (see RlDecoder). An RL picture
    // with a side of 0 is a picture of nothing, not a problem.
    static QSize LoadImageFile(const QString &path, QImage &buffer, PictureProblem *problem);
    static QSize LoadImageBytes(const QString &path, const QByteArray &bytes, QImage &buffer,
                                PictureProblem *problem);

    // The built-in placeholder picture, 100 x 50.
    static QImage Placeholder();

    // "BM", "JPEG", "RL", or empty when the bytes are none of them.
    static QString Kind(const QString &path, const QByteArray &bytes);
};
