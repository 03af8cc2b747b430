// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

class clsElements;

// Names for elements the user adds: one that no sibling holds, so that every
// element stays reachable by its name (a second one of a name is never found).
namespace FreeName {

// `name` itself when no sibling (and none of `alsoTaken`) holds it, else its
// stem, the name without its trailing digits, with the next number that is
// free: btnHome gives btnHome2, btnHome3...; btn4 gives btn5.
QByteArray of(const QByteArray &name, const clsElements *siblings, const QList<QByteArray> &alsoTaken = {});

// A first name for a new element of a type: a short prefix and the first
// free number from 1 (BUTTON gives btn1, TEXT txt1).
QByteArray forType(const QByteArray &type, const clsElements *siblings);

} // namespace FreeName
