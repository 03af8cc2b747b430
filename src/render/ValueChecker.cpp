// SPDX-License-Identifier: MIT
#include "ValueChecker.h"

#include "ProblemCodes.h"
#include "ProblemPlaces.h"
#include "ProblemText.h"
#include "SkinElementWalk.h"
#include "SkinNumber.h"
#include "clsKorviInterface.h"

#include <cstring>


namespace {

const QByteArray kNoValue = QByteArrayLiteral("<NOV>");

// The properties the renderer reads with leading-number semantics.
constexpr QByteArrayView kNumberKeys[] = { "x", "y", "w", "h", "cellw", "cellh", "col", "row", "fontsize",
                                    "padding", "paddingleft", "paddingright", "iconphase" };

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isHexRun(QByteArrayView text)
{
    for (char c : text) {
        if (!isHexDigit(c))
            return false;
    }
    return true;
}

QString numberText(double value)
{
    return QString::number(SkinNumber::roundHalfEven(value));
}

// Most numbers are written as plain digits, which need no full reading.
bool isPlainInteger(QByteArrayView text)
{
    qsizetype i = !text.isEmpty() && text.at(0) == '-' ? 1 : 0;
    if (i >= text.size())
        return false;
    for (; i < text.size(); ++i) {
        if (text.at(i) < '0' || text.at(i) > '9')
            return false;
    }
    return true;
}

bool isNumberKey(QByteArrayView key)
{
    // Asked for every property of every object: sizes first, no library call.
    for (const QByteArrayView number : kNumberKeys) {
        if (number.size() == key.size() && std::memcmp(number.data(), key.data(), size_t(key.size())) == 0)
            return true;
    }
    return false;
}

} // namespace

ValueChecker::ValueChecker(const clsKorviInterface &document, ProblemPlaces &places)
    : mDocument(document)
    , mPlaces(places)
{
}

QString ValueChecker::shown(QByteArrayView bytes) const
{
    return ProblemText::shown(mDocument.codec(), bytes);
}

QVector<Problem> ValueChecker::check()
{
    mProblems.clear();
    SkinElementWalk::forEach(mDocument, [this](const SkinElementWalk::Visit &visit) { this->visit(visit); });
    return mProblems;
}

void ValueChecker::visit(const SkinElementWalk::Visit &visit)
{
    if (visit.element.ElementType() == "SCRIPT")
        return;
    checkNumbers(visit);
    checkColour(visit);
}

void ValueChecker::add(const SkinElementWalk::Visit &visit, const QString &code, QByteArrayView key,
                       const QString &message)
{
    Problem problem;
    problem.severity = Problem::Severity::Warning;
    problem.code = code;
    problem.nodeKey = visit.nodeKey;
    problem.message = message;
    mPlaces.placeAtElement(problem, visit.element, key);
    mProblems.append(problem);
}

// The first property of a key is the one read: a repeated one ("x[0]") is
// never read. An empty value counts as absent (the default is used), so it is
// no problem. "z" is read whole or not at all: a z that is no number gives way
// to the layer's own z. Keys are stored in lower case.
void ValueChecker::checkNumbers(const SkinElementWalk::Visit &visit)
{
    const clsProperties &props = visit.element.Properties();
    for (int i = 0; i < props.Count(); ++i) {
        const QByteArrayView key = props.keyAt(i);
        const bool isZ = key == QByteArrayView("z");
        if (!isZ && !isNumberKey(key))
            continue;
        const QByteArrayView value = props.valueAt(i);
        if (value.isEmpty() || isPlainInteger(value) || SkinNumber::isWholeNumber(value))
            continue;
        if (isZ) {
            add(visit, ProblemCodes::NotANumber, key,
                QStringLiteral("z=%1 is no number: the object is put in the layer's own z instead")
                    .arg(value == kNoValue ? QStringLiteral("(no value)") : shown(value)));
            continue;
        }
        const QString name = shown(key);
        if (value == kNoValue) {
            add(visit, ProblemCodes::NotANumber, key, QStringLiteral("%1 is written without a value: it reads as 0").arg(name));
            continue;
        }
        qsizetype used = 0;
        const double number = SkinNumber::leading(value, &used);
        add(visit, ProblemCodes::NotANumber, key,
            used > 0 ? QStringLiteral("%1=%2 reads as %1=%3: write %1=%3").arg(name, shown(value), numberText(number))
                     : QStringLiteral("%1=%2 is no number: it reads as 0").arg(name, shown(value)));
    }
}

// A colour is "#" and six hexadecimal digits; its first character is passed
// over whatever it is, and the next six read two by two.
void ValueChecker::checkColour(const SkinElementWalk::Visit &visit)
{
    const clsProperty property = visit.element.Properties().Find("color");
    if (!property || property.valueView().isEmpty())
        return;
    const QByteArrayView value = property.valueView();
    if (value.size() == 7 && value.at(0) == '#' && isHexRun(value.sliced(1)))
        return;
    QString message;
    if (value == kNoValue)
        message = QStringLiteral("color is written without a value: write # and six hexadecimal digits, such as color=#FFFFFF");
    else if (value.size() == 6 && isHexRun(value))
        message = QStringLiteral("color=%1 lacks its #: the first character is passed over, so the colour reads wrong; write color=#%1")
                      .arg(shown(value));
    else
        message = QStringLiteral("color=%1 is no colour: a colour is # and six hexadecimal digits (red, green, blue), such as color=#FF8000")
                      .arg(shown(value));
    add(visit, ProblemCodes::BadColour, property.Key(), message);
}
