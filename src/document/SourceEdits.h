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

    // The bytes with every edit made; false when two edits overlap.
    bool apply(const QByteArray &bytes, QByteArray &out) const;

    // The same edits placed in `changed`, a newer text of the file: each edit
    // is found there by the lines around it in `original`, which must still
    // stand unchanged, once. False when an edit cannot be placed so.
    bool moveOnto(const QByteArray &original, const QByteArray &changed, SourceEdits &moved) const;

    // The edits in the order of the bytes.
    std::vector<Edit> sorted() const;
    // Where a byte that no edit touches stands after the edits.
    qsizetype shifted(qsizetype offset) const;

private:
    std::vector<Edit> mEdits;
};
