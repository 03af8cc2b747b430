// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <vector>

// Changes to a file's bytes: each replaces a range of the bytes as read (an
// empty range inserts) with new bytes. Ranges do not overlap; two insertions
// at one place keep the order in which they were added.
class SourceEdits
{
public:
    struct Edit
    {
        qsizetype begin;
        qsizetype end;
        QByteArray text;
    };

    void replace(qsizetype begin, qsizetype end, const QByteArray &text);
    void insert(qsizetype at, const QByteArray &text) { replace(at, at, text); }
    bool isEmpty() const { return mEdits.empty(); }
    const std::vector<Edit> &edits() const { return mEdits; }

    // Whether the edits lie within bytes of that size, none overlapping another.
    bool fits(qsizetype size) const { return fitsSorted(sorted(), size); }
    // The bytes with every edit made; false when two edits overlap.
    bool apply(const QByteArray &bytes, QByteArray &out) const;
    // The same, made on the bytes themselves: each byte moves once at most,
    // and no second copy of a large file is made. False, leaving the bytes
    // alone, when two edits overlap.
    bool applyInPlace(QByteArray &bytes) const;

    // The same edits placed in `changed`, a newer text of the file: each edit
    // is found there by the lines around it in `original`, which must still
    // stand unchanged, once. False when an edit cannot be placed so.
    bool moveOnto(const QByteArray &original, const QByteArray &changed, SourceEdits &moved) const;

    // The edits in the order of the bytes.
    std::vector<Edit> sorted() const;

private:
    static bool fitsSorted(const std::vector<Edit> &sorted, qsizetype size);

    std::vector<Edit> mEdits;
};
