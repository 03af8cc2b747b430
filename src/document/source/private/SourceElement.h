// SPDX-License-Identifier: MIT
#pragma once

#include "SourceScan.h"

#include <QByteArray>
#include <vector>

class SkinSourceFile;

// An element as it was read from its file, found again from its record: its
// tag line, its closing line, and its properties in order, each under the key
// the reader gave it and with where it stands in the file's bytes.
struct SourceElement
{
    struct Property
    {
        // The key as the collection numbered it ("x", "x[0]"), and the value.
        QByteArray key;
        QByteArray value;
        // Whether it is a plain line of a script block (then `line` is that
        // line) or an attribute (then `attribute` tells where it stands).
        bool isScriptLine = false;
        SourceScan::Attribute attribute;
        SourceScan::Line line;
    };

    SourceScan::Line tag;
    // The closing tag's line; begin < 0 when nothing closed the element.
    qsizetype closingBegin = -1;
    qsizetype closingNext = -1;
    std::vector<Property> properties;

    static SourceElement read(const SkinSourceFile &file, quint32 record);
};
