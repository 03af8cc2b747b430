// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringView>

class clsKorviInterface;
class SkinCodec;
class SkinReadError;

// The document as JSON, as `korvi dump` prints it:
// {"Headers":[E...],"Templates":[E...],"Fonts":[E...],"Layers":[E...],"error":...}
// with E = {"key","type","name","imported","properties":[[Key,value],...],"children":[E...]}.
// Skin bytes map one to one to the code points U+0000..U+00FF; everything
// outside printable ASCII is written as a \u escape, so the output is ASCII.
// With `codec`, the skin's text is decoded in it instead (still escaped).
QByteArray documentToJson(const clsKorviInterface &document, const SkinReadError *error,
                          const SkinCodec *codec = nullptr);

// A JSON string literal for skin bytes, quotes included.
QByteArray jsonStringFromBytes(QByteArrayView bytes);
// A JSON string literal for text, quotes included; ASCII.
QByteArray jsonStringFromText(QStringView text);
