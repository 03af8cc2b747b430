// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <vector>

// Reads one line of a file's bytes again, exactly as the skin file reader
// reads it, and tells where each part of it stands in the bytes. The reader
// keeps only where an element's lines begin; this finds the rest when it is
// needed. All offsets are into the file's bytes.
namespace SourceScan {

struct Attribute
{
    // The key as the reader keeps it (lower case) and the value as read, or
    // the no-value marker for a flag.
    QByteArray key;
    QByteArray value;
    qsizetype keyBegin = 0;
    qsizetype keyEnd = 0;
    // For a flag both are keyEnd.
    qsizetype valueBegin = 0;
    qsizetype valueEnd = 0;
    bool hasValue = false;
};

struct Line
{
    // The line's first byte; the end of the last line it takes (a quoted value
    // may pull in the lines after it), before that line's end; and where the
    // line after it begins (past the size of the bytes after a last line
    // without a line end, as the reader counts).
    qsizetype begin = 0;
    qsizetype end = 0;
    qsizetype next = 0;
    // Whether its first token is "<": a tag; else a plain line.
    bool isTag = false;
    // A tag's word and its name word (empty for a var tag and a tag without
    // a name; a name's trailing "/" is not part of it).
    qsizetype wordBegin = 0;
    qsizetype wordEnd = 0;
    qsizetype nameBegin = 0;
    qsizetype nameEnd = 0;
    // Where the reading of the attributes stopped: at a ">" or a "<" where a
    // key would begin, or at the end of the line.
    qsizetype stop = 0;
    // The attributes the reader keeps, in order.
    std::vector<Attribute> attributes;
    // A plain line: its text without blanks around it, and that text as a
    // script line is kept (without tabs).
    qsizetype textBegin = 0;
    qsizetype textEnd = 0;
    QByteArray scriptText;
};

// The line that begins at `begin` (at most the size of the bytes: the empty
// line the reader sees after the last one).
Line scanLine(const QByteArray &bytes, qsizetype begin);

// Where the line that holds `offset` begins and where the next one begins.
qsizetype lineStartOf(const QByteArray &bytes, qsizetype offset);
qsizetype nextLineStart(const QByteArray &bytes, qsizetype offset);

// The line end the file uses most: CR LF, LF or CR (CR LF when it has none,
// or on a tie).
QByteArray dominantLineEnd(const QByteArray &bytes);
// Whether the bytes end with a line end (CR or LF).
bool endsWithLineEnd(const QByteArray &bytes);
// The blanks and tabs a line begins with.
QByteArray indentationAt(const QByteArray &bytes, qsizetype lineBegin);

} // namespace SourceScan
