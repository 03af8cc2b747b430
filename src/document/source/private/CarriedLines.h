// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <utility>
#include <vector>

class SkinSourceFile;
class clsElement;
class clsKorviInterface;

// An element that only moved (to another place among its siblings, or to
// another block of its file) goes with its own lines, byte for byte: the
// spelling, spacing and case the skin's maker gave them stay. That holds
// when it and everything in it are what their records say: no value, name
// or type changed, the same children in the order read, and no property
// given by a line the element's removal would leave behind.
class CarriedLines
{
public:
    explicit CarriedLines(const clsKorviInterface &document);

    // The element's lines as read (its tag, script and closing lines, with
    // those of its children, in file order), ending with a line end; empty
    // when it cannot be carried and must be written anew.
    QByteArray of(const clsElement &element, const QByteArray &lineEnd);
    // Whether `of` would give the element's lines.
    bool canCarry(const clsElement &element);

private:
    using Span = std::pair<qsizetype, qsizetype>;

    bool collect(const clsElement &element, const SkinSourceFile &source, std::vector<Span> &lines);
    int childRecordCount(int file, quint32 record);

    const clsKorviInterface &mDocument;
    // By file number, worked out when first needed: how many records stand
    // in each record's block.
    std::vector<std::vector<int>> mChildCounts;
};
