// SPDX-License-Identifier: MIT
#include "SourceEdits.h"

#include "SourceScan.h"

#include <algorithm>

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

qsizetype SourceEdits::shifted(qsizetype offset) const
{
    qsizetype moved = offset;
    for (const Edit &edit : mEdits) {
        if (edit.end <= offset && edit.begin < offset)
            moved += edit.text.size() - (edit.end - edit.begin);
    }
    return moved;
}

bool SourceEdits::apply(const QByteArray &bytes, QByteArray &out) const
{
    const std::vector<Edit> edits = sorted();
    qsizetype grow = 0;
    for (const Edit &edit : edits)
        grow += edit.text.size() - (edit.end - edit.begin);
    out.clear();
    out.reserve(bytes.size() + qMax<qsizetype>(grow, 0));
    qsizetype at = 0;
    for (const Edit &edit : edits) {
        if (edit.begin < at || edit.end > bytes.size() || edit.end < edit.begin)
            return false;
        out.append(bytes.constData() + at, edit.begin - at);
        out.append(edit.text);
        at = edit.end;
    }
    out.append(bytes.constData() + at, bytes.size() - at);
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
