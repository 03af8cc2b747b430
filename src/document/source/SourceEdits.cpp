// SPDX-License-Identifier: MIT
#include "SourceEdits.h"

#include "SourceScan.h"

#include <algorithm>
#include <cstring>

void SourceEdits::replace(qsizetype begin, qsizetype end, const QByteArray &text)
{
    mEdits.push_back({ begin, end, text });
}

std::vector<SourceEdits::Edit> SourceEdits::sorted() const
{
    std::vector<Edit> edits = mEdits;
    std::stable_sort(edits.begin(), edits.end(), [](const Edit &a, const Edit &b) {
        return a.begin != b.begin ? a.begin < b.begin : a.end < b.end;
    });
    return edits;
}

// Whether sorted edits lie within the bytes, one after the other.
bool SourceEdits::fitsSorted(const std::vector<Edit> &sorted, qsizetype size)
{
    qsizetype at = 0;
    for (const Edit &edit : sorted) {
        if (edit.begin < at || edit.end > size || edit.end < edit.begin)
            return false;
        at = edit.end;
    }
    return true;
}

bool SourceEdits::apply(const QByteArray &bytes, QByteArray &out) const
{
    const std::vector<Edit> edits = sorted();
    if (!fitsSorted(edits, bytes.size()))
        return false;
    qsizetype grow = 0;
    for (const Edit &edit : edits)
        grow += edit.text.size() - (edit.end - edit.begin);
    out.clear();
    out.reserve(bytes.size() + qMax<qsizetype>(grow, 0));
    qsizetype at = 0;
    for (const Edit &edit : edits) {
        out.append(bytes.constData() + at, edit.begin - at);
        out.append(edit.text);
        at = edit.end;
    }
    out.append(bytes.constData() + at, bytes.size() - at);
    return true;
}

// Every part between two edits moves by what the edits before it add or take:
// those that move towards the start are moved first, from the first one on,
// then those that move towards the end, from the last one back, so that no
// part is written over before it has moved. The new texts go in last.
bool SourceEdits::applyInPlace(QByteArray &bytes) const
{
    const std::vector<Edit> edits = sorted();
    const qsizetype size = bytes.size();
    if (!fitsSorted(edits, size))
        return false;
    struct Part
    {
        qsizetype from;
        qsizetype length;
        qsizetype to;
    };
    std::vector<Part> parts;
    std::vector<qsizetype> textAt;
    parts.reserve(edits.size() + 1);
    qsizetype from = 0;
    qsizetype to = 0;
    for (const Edit &edit : edits) {
        parts.push_back({ from, edit.begin - from, to });
        to += edit.begin - from;
        textAt.push_back(to);
        to += edit.text.size();
        from = edit.end;
    }
    parts.push_back({ from, size - from, to });
    const qsizetype newSize = to + size - from;
    if (newSize > size) {
        // Room for exactly the new text: a large file's bytes are not given
        // the room of a growing array.
        bytes.reserve(newSize);
        bytes.resize(newSize);
    }
    char *data = bytes.data();
    for (const Part &part : parts) {
        if (part.to < part.from && part.length > 0)
            memmove(data + part.to, data + part.from, size_t(part.length));
    }
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (part->to > part->from && part->length > 0)
            memmove(data + part->to, data + part->from, size_t(part->length));
    }
    for (size_t e = 0; e < edits.size(); ++e) {
        if (!edits[e].text.isEmpty())
            memcpy(data + textAt[e], edits[e].text.constData(), size_t(edits[e].text.size()));
    }
    if (newSize < size)
        bytes.resize(newSize);
    return true;
}

// An edit's surroundings are the whole lines it touches and one line on
// either side; they must stand in the newer text exactly once, so that the
// edit lands on the very bytes it was made for.
bool SourceEdits::moveOnto(const QByteArray &original, const QByteArray &changed, SourceEdits &moved) const
{
    moved.mEdits.clear();
    for (const Edit &edit : mEdits) {
        qsizetype from = SourceScan::lineStartOf(original, edit.begin);
        if (from > 0)
            from = SourceScan::lineStartOf(original, from - 1);
        qsizetype to = SourceScan::nextLineStart(original, qMax(edit.end - 1, edit.begin));
        to = SourceScan::nextLineStart(original, to);
        const QByteArray context = original.mid(from, to - from);
        const qsizetype found = changed.indexOf(context);
        if (found < 0 || (!context.isEmpty() && changed.indexOf(context, found + 1) >= 0))
            return false;
        const qsizetype shift = found - from;
        moved.mEdits.push_back({ edit.begin + shift, edit.end + shift, edit.text });
    }
    QByteArray check;
    return moved.apply(changed, check);
}
