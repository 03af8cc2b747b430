// SPDX-License-Identifier: MIT
#pragma once

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

// Whether an element names a record of a file the document holds.
bool isFromAFile(const clsKorviInterface &document, const clsElement &element);

} // namespace DocumentMatch
