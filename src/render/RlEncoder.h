// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

// Writes pictures as the skin's run-length ("RL") files, so that skin pictures can
// be edited in any paint program and brought back. Magenta (255, 0, 255) and
// fully transparent pixels become index 0; every other colour is reduced to
// RGB565 and stored once in the palette, most frequent first. Runs of three or
// more pixels use code 254, transparent stretches of two or more code 255 (a
// transparent tail of a row is left out), and colours past index 252 are reached
// through the palette offset (code 253). Each row is one row-table entry.
class RlEncoder
{
public:
    struct Result
    {
        QByteArray bytes; // empty on failure
        QString error;    // why nothing was written
    };

    // `widePalette` sets flags bit 0 (3-byte palette entries). Readers of this
    // format take the colours from 2-byte words even then, so the words are
    // written where they read them and the extra N bytes of the wider layout
    // are zero.
    static Result encode(const QImage &image, bool widePalette = false);

    // The same picture with one code per pixel (same palette and offset codes):
    // the size an encoding must not exceed.
    static Result encodeNaive(const QImage &image, bool widePalette = false);

    // The colour a pixel decodes to after encoding: magenta for transparent
    // pixels, otherwise the RGB565-reduced colour.
    static QRgb reducedColour(QRgb pixel);
};
