// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"
#include "SourceLines.h"

#include <QByteArrayView>
#include <memory>
#include <unordered_map>
#include <vector>

class PropertyPack;
class SkinSourceFile;
class clsElement;
class clsKorviInterface;

// Puts problems where they stand in the skin's files: the file's path and the
// 1-based line and column of an element's tag, of one of its properties, or of
// any offset of a file read into the document. Each file's lines are counted
// once, when a problem first needs them.
class ProblemPlaces
{
public:
    explicit ProblemPlaces(const clsKorviInterface &document);
    ~ProblemPlaces();

    // At the "<" of the element's tag, or, given the key of one of its
    // properties as the element holds it ("x", "x[0]"), at that property's key
    // (a script line: at its text). An element made by an edit stands nowhere:
    // the problem keeps no file.
    void placeAtElement(Problem &problem, const clsElement &element, QByteArrayView propertyKey = {});
    // At a byte offset of a file, by its number in the document's sources.
    void placeAt(Problem &problem, int fileNumber, qsizetype offset);
    // "FILE:LINE" of an element's tag, for messages that point elsewhere.
    QString whereIs(const clsElement &element);
    // Where a 1-based line of a file begins (see SourceLines::lineStart).
    qsizetype lineStart(int fileNumber, qint64 line);

    // Counts the lines of up to `budget` more bytes of the files, so that a
    // check made in slices does not wait for a large file's lines at its first
    // problem; true once every file's lines are counted. Optional: lines not
    // counted yet are counted when a problem needs them.
    bool countLines(qsizetype budget);

private:
    // Where an attribute's key stands in a file's bytes, and how long it is.
    struct KeyPlace
    {
        qsizetype begin;
        qsizetype length;
    };

    const SourceLines &linesOf(int fileNumber);
    void readTagKeys(const QByteArray &bytes, qsizetype lineBegin);
    qsizetype propertyOffset(const SkinSourceFile &file, const clsElement &element, QByteArrayView key,
                             qsizetype fallback);

    SourceLines &uncountedLinesOf(int fileNumber);

    const clsKorviInterface &mDocument;
    std::unordered_map<int, std::unique_ptr<SourceLines>> mLines;
    // The file whose lines countLines() counts next.
    int mCountingFile = 1;
    // The keys of the tag line of the element placed last, in order: problems
    // of one element mostly come one after the other. Problems come by the
    // hundred thousand in a large skin, so the line is read into buffers kept
    // from one element to the next.
    const clsElement *mLastElement = nullptr;
    std::vector<KeyPlace> mLastKeys;
    QByteArray mLine;
    QByteArray mGrown;
    std::unique_ptr<PropertyPack> mPack;
};
