// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyPack.h"

#include <QByteArray>

class clsElement;

// Whether an element is still what its tag line in a file's bytes says: its
// type, its name and its properties in order (keys without regard to case and
// numbering). It reads the line as the reader does, into buffers it keeps, so
// that checking every element of a large skin allocates next to nothing.
class TagLineCheck
{
public:
    bool sameAsRead(const QByteArray &bytes, qsizetype lineBegin, const clsElement &element);

private:
    QByteArray mLine;
    QByteArray mGrown;
    PropertyPack mPack;
};
