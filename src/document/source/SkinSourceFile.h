// SPDX-License-Identifier: MIT
#pragma once

#include "ElementSource.h"
#include "SourceEdits.h"

#include <QByteArray>
#include <QString>
#include <vector>

// One file read into a document: its bytes exactly as read, and where every
// element read from it stands in them. Saving changes in place starts from
// these bytes.
class SkinSourceFile
{
public:
    SkinSourceFile(const QString &path, const QByteArray &bytes, bool imported);

    // The file as it was named when read.
    QString path() const { return mPath; }
    const QByteArray &bytes() const { return mBytes; }
    bool imported() const { return mImported; }

    // Whether the bytes can be addressed by the records' offsets.
    static bool fitsRecords(qsizetype size) { return size < qsizetype(ElementSource::kNone); }

    // The 1-based line where reading stopped with an error; 0 when the file
    // was read to its end.
    qint64 errorLine() const { return mErrorLine; }
    void setErrorLine(qint64 line) { mErrorLine = line; }

    quint32 addElement(quint32 tagLine, quint32 parent);
    int elementCount() const { return int(mElements.size()); }
    const ElementSource &element(quint32 record) const { return mElements[record]; }
    void setClosingLine(quint32 record, quint32 line) { mElements[record].closingLine = line; }
    void addMoreLine(quint32 record, quint32 line);
    // The further lines of an element, in file order; empty when none.
    const std::vector<quint32> &moreLines(quint32 record) const;

    // Makes edits that move whole lines on its bytes, in place: every record
    // moves by `shift` (from an offset in the bytes before to one after) and
    // keeps its element. False, changing nothing, when the edits do not fit.
    template<typename Shift>
    bool takeEdits(const SourceEdits &edits, Shift &&shift)
    {
        if (!edits.applyInPlace(mBytes))
            return false;
        const auto move = [&](quint32 &offset) {
            if (offset != ElementSource::kNone)
                offset = quint32(shift(offset));
        };
        for (ElementSource &element : mElements) {
            move(element.tagLine);
            move(element.closingLine);
        }
        for (std::vector<quint32> &lines : mMoreLines) {
            for (quint32 &line : lines)
                move(line);
        }
        return true;
    }

    // Gives back the room reserved while reading.
    void squeeze();
    qsizetype memoryUsed() const;

private:
    QString mPath;
    QByteArray mBytes;
    bool mImported;
    qint64 mErrorLine = 0;
    std::vector<ElementSource> mElements;
    std::vector<std::vector<quint32>> mMoreLines;
};
