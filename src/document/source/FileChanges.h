// SPDX-License-Identifier: MIT
#pragma once

#include "SourceEdits.h"

#include <QString>
#include <QStringList>
#include <vector>

class clsElement;

// What one file read into the document needs to hold the document's changes:
// its bytes with exactly the changed parts rewritten.
struct FileChanges
{
    // The file's number in the document's SkinSources, and its path.
    int file = 0;
    QString path;
    // Elements edited (however many of their values, properties or names
    // changed: a drag is one change), removed or added (an element with its
    // children counts once).
    int changeCount = 0;
    SourceEdits edits;
    // Why some change cannot be written into the file so that it reads back.
    QStringList problems;
    // Whether every edit lies in the tag line of an element in `edited` (no
    // line comes or goes, no tag word or name changes): the new text can then
    // be checked one tag line at a time.
    bool onlyTagLines = true;
    std::vector<const clsElement *> edited;
};
