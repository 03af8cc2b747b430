// SPDX-License-Identifier: MIT
#pragma once

#include "CarriedLines.h"
#include "FileChanges.h"
#include "TagLineCheck.h"

#include <QString>
#include <QStringList>
#include <vector>

class SkinSourceFile;
class clsElement;
class clsElements;
class clsKorviInterface;
struct SourceElement;

// Finds the changes by comparing the document with what its files' bytes say,
// whatever made them: an element or a property the same as when read is no
// change, however it came back to that. Each element goes back into the file it
// was read from; new top-level elements go into one file the caller names.
class ChangeFinder
{
public:
    // `fileForNewElements`: the number of the file that receives new layers,
    // templates and other top-level elements (0: none does).
    ChangeFinder(const clsKorviInterface &document, int fileForNewElements);

    // The files that hold a change (or a problem), in reading order; first,
    // with file number 0, the problems of new elements no file is to receive.
    std::vector<FileChanges> find();

    // Edited tags are written anew whole in the writer's layout instead of
    // having only their changed parts rewritten: for a change whose splice
    // would not read back as edited.
    void rewriteEditedTags() { mRewriteTags = true; }

private:
    enum class Collection { Headers, Templates, Fonts, Layers };

    bool standsIn(const clsElement &element, int file, quint32 parentRecord) const;
    std::vector<bool> keepInPlace(const std::vector<const clsElement *> &siblings, int onlyFile, quint32 parentRecord);
    FileChanges &changesOf(int file);
    void visit(const clsElement &element);
    void visitChildren(const clsElement &element, FileChanges &changes);
    void visitCollection(const clsElements &elements, Collection collection);
    void writeAnew(const clsElement &element, int file, qsizetype at, const QByteArray &indent);
    void rewriteTag(const clsElement &element, const SourceElement &read, FileChanges &changes);
    void compareTag(const clsElement &element, const SourceElement &read, FileChanges &changes);
    void compareProperties(const clsElement &element, const SourceElement &read, FileChanges &changes);
    void changeValue(const clsElement &element, const SourceElement &read, size_t index, const QByteArray &value,
                     FileChanges &changes);
    void removeProperty(const SourceElement &read, size_t index, FileChanges &changes);
    void addProperties(const clsElement &element, const SourceElement &read, const std::vector<int> &added,
                       FileChanges &changes);
    void addTopLevel(const clsElement &element, Collection collection, int file);
    void noteMoved(const clsElement &element);
    void removeUnclaimed(int file);
    void removeLines(FileChanges &changes, qsizetype begin, qsizetype next);
    qsizetype endOfContent(const clsElement &element, int file) const;
    qsizetype endOfElement(const clsElement &element, int file) const;
    qsizetype tagLineOf(const clsElement &element) const;
    QByteArray indentOf(const clsElement &element) const;
    QByteArray lineBreakBefore(const QByteArray &bytes, qsizetype at, const QByteArray &lineEnd) const;

    const clsKorviInterface &mDocument;
    int mFileForNewElements;
    // By file number: the changes, and which records the document still holds.
    std::vector<FileChanges> mChanges;
    std::vector<std::vector<bool>> mClaimed;
    // Records of elements that moved: their lines go, and the element is
    // written again where it now stands, as one change.
    std::vector<std::vector<bool>> mMoved;
    // The line end of each file, worked out when first needed.
    std::vector<QByteArray> mLineEnds;
    const QByteArray &lineEndOf(int file);
    QByteArray mNewHeaders;
    TagLineCheck mTagLineCheck;
    CarriedLines mCarried;
    bool mRewriteTags = false;
};
