#pragma once

#include <QImage>
#include <QSize>
#include <QString>

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

    // The built-in placeholder picture, 100 x 50.
    static QImage Placeholder();

    // "BM", "JPEG", "RL", or empty when the bytes are none of them.
    static QString Kind(const QString &path, const QByteArray &bytes);
};
