// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

// Names of elements and keys of properties are single words of letters,
// digits, "_" and "/", as the reader reads them. A name typed with any other
// character would read back as a shorter name followed by flags.
namespace NameWord {

bool isNameWord(QByteArrayView word);

// Why `name` cannot name an element or a layer, or empty when it can. A
// name's trailing "/" is not read as part of it ("<USELAYER a/>" names "a").
QString problemWithName(const QString &name);
// Why `key` cannot be a property's key, or empty when it can. "/" alone is
// read as the end of an empty-element tag.
QString problemWithKey(const QString &key);

} // namespace NameWord
