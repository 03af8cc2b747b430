// SPDX-License-Identifier: MIT
#pragma once

#include "SkinCodec.h"

#include <QByteArray>
#include <QString>

class clsElement;

// The lines of an element made by an edit, written into a file where it must
// read back as it is: its tag line with its properties, its script lines, its
// children, and a closing tag where the element opens a block.
class ElementText
{
public:
    // `lineEnd` ends every line; `indent` begins the element's own lines and
    // one tab more its children's.
    // Problems quote the element's text in `codec`.
    ElementText(const QByteArray &lineEnd, const QByteArray &indent, const SkinCodec &codec)
        : mLineEnd(lineEnd), mIndent(indent), mCodec(codec)
    {
    }

    // The text, or empty with `problem` set when some part of the element
    // cannot be written so that it reads back.
    QByteArray of(const clsElement &element, QString &problem) const;
    // The element's own lines without its children: its tag line (with the
    // lines of a script), and the closing tag of a block, each ended.
    QByteArray openingOf(const clsElement &element, QString &problem) const;
    QByteArray closingOf(const clsElement &element) const;

    // " key=value" (" key" for a flag) as an attribute is added to a tag
    // line, or empty with `problem` set.
    static QByteArray attribute(QByteArrayView key, QByteArrayView value, const SkinCodec &codec, QString &problem);
    // Whether a tag of this type opens a block that a closing tag ends.
    static bool opensBlock(const QByteArray &type);

private:
    void append(QByteArray &out, const clsElement &element, const QByteArray &indent, QString &problem) const;
    QByteArray opening(const clsElement &element, const QByteArray &indent, QString &problem) const;
    QByteArray closing(const clsElement &element, const QByteArray &indent) const;

    QByteArray mLineEnd;
    QByteArray mIndent;
    SkinCodec mCodec;
};
