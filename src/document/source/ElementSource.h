// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// Where an element read from a file stands in that file's bytes, as offsets
// into the bytes read. Its properties are not held here: scanning its lines
// again (SourceScan) finds them exactly as the reader read them, with where
// each one stands, so a large skin keeps one small record per element.
struct ElementSource
{
    static constexpr quint32 kNone = 0xFFFFFFFFu;

    // The first byte of the line holding the element's tag.
    quint32 tagLine = kNone;
    // The first byte of the line of the closing tag that closed it, if any.
    quint32 closingLine = kNone;
    // The record of the block it stands in, in the same file; kNone at the top.
    quint32 parent = kNone;
    // The lines after its tag line that gave it properties (script lines, and
    // attributes on tags that make no element): an index into the file's
    // lists of such lines.
    quint32 moreLines = kNone;
};
