// SPDX-License-Identifier: MIT
#include "SkinSourceFile.h"

SkinSourceFile::SkinSourceFile(const QString &path, const QByteArray &bytes, bool imported)
    : mPath(path)
    , mBytes(bytes)
    , mImported(imported)
{
}

quint32 SkinSourceFile::addElement(quint32 tagLine, quint32 parent)
{
    ElementSource source;
    source.tagLine = tagLine;
    source.parent = parent;
    mElements.push_back(source);
    return quint32(mElements.size() - 1);
}

void SkinSourceFile::addMoreLine(quint32 record, quint32 line)
{
    ElementSource &source = mElements[record];
    if (source.moreLines == ElementSource::kNone) {
        source.moreLines = quint32(mMoreLines.size());
        mMoreLines.emplace_back();
    }
    mMoreLines[source.moreLines].push_back(line);
}

const std::vector<quint32> &SkinSourceFile::moreLines(quint32 record) const
{
    static const std::vector<quint32> kNoLines;
    const quint32 index = mElements[record].moreLines;
    return index == ElementSource::kNone ? kNoLines : mMoreLines[index];
}

void SkinSourceFile::squeeze()
{
    mElements.shrink_to_fit();
    mMoreLines.shrink_to_fit();
}

qsizetype SkinSourceFile::memoryUsed() const
{
    qsizetype bytes = sizeof(*this) + mBytes.capacity() + qsizetype(mElements.capacity() * sizeof(ElementSource));
    for (const std::vector<quint32> &lines : mMoreLines)
        bytes += qsizetype(sizeof(lines) + lines.capacity() * sizeof(quint32));
    return bytes;
}
