// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class clsKorviInterface;
class SkinReadError;

// The document as JSON, as `korvi dump` prints it:
// {"Headers":[E...],"Templates":[E...],"Fonts":[E...],"Layers":[E...],"error":...}
// with E = {"key","type","name","imported","properties":[[Key,value],...],"children":[E...]}.
// Skin bytes map one to one to the code points U+0000..U+00FF; everything
// outside printable ASCII is written as a \u escape, so the output is ASCII.
QByteArray DocumentToJson(const clsKorviInterface &document, const SkinReadError *error);

// A JSON string literal for skin bytes, quotes included.
QByteArray JsonStringFromBytes(QByteArrayView bytes);
