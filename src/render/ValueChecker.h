// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"

#include <QVector>
#include <utility>

class ProblemPlaces;
class clsKorviInterface;
namespace SkinElementWalk { struct Visit; }

// Values the renderer reads as numbers or colours that are not written as
// such: "x=12px" (read as 12), "fontsize=big" (read as 0), "color=red". They
// are read by the rules of the drawing side (SkinNumber, SkinValues), so they
// are checked here. Each element's own values are checked, where they stand;
// a value inherited from a template is checked on the template.
class ValueChecker
{
public:
    ValueChecker(const clsKorviInterface &document, ProblemPlaces &places);

    QVector<Problem> check();
    // One element of a walk that serves several checkers, and what was found.
    void visit(const SkinElementWalk::Visit &visit);
    QVector<Problem> problems() const { return mProblems; }
    // What was found, given away.
    QVector<Problem> takeProblems() { return std::exchange(mProblems, {}); }

private:
    // Skin text quoted in a message, in the skin's code page.
    QString shown(QByteArrayView bytes) const;
    void checkNumbers(const SkinElementWalk::Visit &visit);
    void checkColour(const SkinElementWalk::Visit &visit);
    void add(const SkinElementWalk::Visit &visit, const QString &code, QByteArrayView key, const QString &message);

    const clsKorviInterface &mDocument;
    ProblemPlaces &mPlaces;
    QVector<Problem> mProblems;
};
