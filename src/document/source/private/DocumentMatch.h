// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class clsElement;
class clsKorviInterface;

// The elements of one file within a document, next to those of a document
// that holds that file alone: whether they are the same, and passing on
// where each one now stands in the file.
namespace DocumentMatch {

// Whether `alone` holds exactly what `document` holds of file number `file`
// (elements read from it, and, when it receives new elements, the new
// top-level ones): types, names, properties in order (keys without regard to
// case and numbering) and children. `alone` holds its file as number 1.
bool sameAsFile(const clsKorviInterface &document, int file, bool receivesNew, const clsKorviInterface &alone);

// After sameAsFile: every element of the file in `document` takes the record
// of its counterpart in `alone`, under the number `newNumber`.
void takeRecords(clsKorviInterface &document, int file, bool receivesNew, const clsKorviInterface &alone,
                 int newNumber);

// In words, the first element where `alone` differs from what `document`
// holds of the file ("LAYER ui_Main > BUTTON btnHome: x=5 would read back
// as ..."); empty when they are the same.
QString firstDifference(const clsKorviInterface &document, int file, bool receivesNew, const clsKorviInterface &alone);

// Whether `alone` holds exactly the elements the whole-document writer
// writes (every one not imported), and, after that, each of them taking the
// record of its counterpart under `newNumber`.
bool sameAsWholeDocument(const clsKorviInterface &document, const clsKorviInterface &alone);
void takeWholeDocumentRecords(clsKorviInterface &document, const clsKorviInterface &alone, int newNumber);

// Whether an element names a record of a file the document holds.
bool isFromAFile(const clsKorviInterface &document, const clsElement &element);

} // namespace DocumentMatch
