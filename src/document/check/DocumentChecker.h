// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"
#include "SkinReadError.h"

#include <QHash>
#include <QVector>
#include <memory>
#include <vector>

class ProblemPlaces;
class clsElement;
class clsElements;
class clsKorviInterface;
namespace SkinElementWalk { struct Visit; }
namespace SourceScan { struct Attribute; struct Line; }

// The checks of a skin that need only its document and the bytes of the files
// it was read from: names that find nothing (templates, font types, element
// templates, used layers), template chains that come back to themselves,
// values the reader splits or strips, scripts never closed, closing tags that
// close nothing or another block, names given twice, and the reading errors of
// the open. The checks of pictures, numbers, colours and places on the screen
// belong to the drawing side (PictureChecker, ValueChecker).
class DocumentChecker
{
public:
    DocumentChecker(const clsKorviInterface &document, ProblemPlaces &places);
    ~DocumentChecker();

    // Every problem found, in no particular order. `readingErrors` are those
    // the open met (SkinOpenPlan::readInto).
    QVector<Problem> check(const QVector<SkinReadError> &readingErrors = {});

    // The same in steps, so that one walk of the document serves several
    // checkers: begin(), then scanFiles() until it says the files' tag lines
    // are all read, then visit() for every element of the walk
    // (SkinElementWalk) in turn; finish() gives the problems.
    void begin();
    // Reads the tag lines of up to about `budget` more bytes; true once done.
    bool scanFiles(qsizetype budget);
    void visit(const SkinElementWalk::Visit &visit);
    QVector<Problem> finish(const QVector<SkinReadError> &readingErrors);

private:
    // Skin text quoted in a message, in the skin's code page.
    QString shown(QByteArrayView bytes) const;
    void checkElement(const SkinElementWalk::Visit &visit);
    void checkProperties(const SkinElementWalk::Visit &visit);
    void checkLink(const SkinElementWalk::Visit &visit, int index, QByteArrayView linkKey, const clsElements &targets,
                   const QString &code, const QString &what);
    void checkElementTemplates(const SkinElementWalk::Visit &visit);
    void checkUsedLayer(const SkinElementWalk::Visit &visit);
    void checkRepeatedKey(const SkinElementWalk::Visit &visit, int index);
    void checkDuplicateName(const SkinElementWalk::Visit &visit);
    void checkScriptClosed(const SkinElementWalk::Visit &visit);
    void checkClosingTag(const SkinElementWalk::Visit &visit);
    void checkCycles(const clsElements &entries, QByteArrayView linkKey, const QString &what, char letter);
    void startFile(int fileNumber);
    bool scanFile(qsizetype budget);
    void checkSplitValues(int fileNumber, const SourceScan::Line &line);
    bool checkUnquotedText(int fileNumber, const SourceScan::Line &line, const SourceScan::Attribute &a);
    void checkNameLetters(int fileNumber, const SourceScan::Line &line);
    void giveLineProblemsNodeKeys(const SkinElementWalk::Visit &visit);

    Problem &add(Problem::Severity severity, const QString &code, const QByteArray &nodeKey,
                 const QString &message);
    // A problem on a line of a file, whose element is found in the walk.
    void addOnLine(int fileNumber, qsizetype lineBegin, qsizetype at, Problem::Severity severity,
                   const QString &code, const QString &message);

    const clsKorviInterface &mDocument;
    ProblemPlaces &mPlaces;
    QVector<Problem> mProblems;
    // Problems found on lines, by file number and the offset where the line
    // begins: the walk gives them the node key of the element read there.
    QHash<QPair<int, qsizetype>, QVector<int>> mLineProblems;
    // How far scanFiles() has read: the file, the line it reads next, where
    // it stops, and the lines of that file that closed a block.
    int mScanFile = 0;
    qsizetype mScanAt = 0;
    qsizetype mScanStop = 0;
    std::vector<qsizetype> mClosings;
};
