// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <utility>
#include <vector>

class SkinSourceFile;
class clsElement;
class clsKorviInterface;
struct SourceElement;

// An element that moved (to another place among its siblings, or to another
// block of its file) goes with its own lines, byte for byte, as far as they
// still say what it is: the spelling, spacing and case the skin's maker gave
// them stay. A part that is as read (no value, name or type changed, the
// same children in the order read, no property given by a line its removal
// would leave behind) takes its lines whole; a block keeps its tag and
// closing lines when its own tag is as read (else they are written anew)
// around its children, each taken the same way; anything else is written
// anew (ElementText).
class CarriedLines
{
public:
    explicit CarriedLines(const clsKorviInterface &document);

    // The element's text at its new place in `file`, ending with a line end;
    // `indent` is for what is written anew. Empty, with `problem` set, when a
    // part cannot be written so that it reads back.
    QByteArray textOf(const clsElement &element, int file, const QByteArray &lineEnd, const QByteArray &indent,
                      QString &problem);
    // Whether the element is as read, whole, so that all its lines go along.
    bool canCarry(const clsElement &element);

private:
    using Span = std::pair<qsizetype, qsizetype>;

    bool collect(const clsElement &element, const SkinSourceFile &source, std::vector<Span> &lines);
    static bool ownTagAsRead(const clsElement &element, const SourceElement &read);
    int childRecordCount(int file, quint32 record);

    const clsKorviInterface &mDocument;
    // By file number, worked out when first needed: how many records stand
    // in each record's block.
    std::vector<std::vector<int>> mChildCounts;
};
