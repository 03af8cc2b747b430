#include "ValueChecker.h"

#include "ProblemCodes.h"
#include "ProblemPlaces.h"
#include "ProblemText.h"
#include "SkinElementWalk.h"
#include "SkinNumber.h"
#include "clsKorviInterface.h"

using ProblemText::shown;

namespace {

const QByteArray kNoValue = QByteArrayLiteral("<NOV>");

// The properties the renderer reads with leading-number semantics.
const char *const kNumberKeys[] = { "x", "y", "w", "h", "cellw", "cellh", "col", "row", "fontsize",
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

} // namespace

ValueChecker::ValueChecker(const clsKorviInterface &document, ProblemPlaces &places)
    : mDocument(document)
    , mPlaces(places)
{
}

QVector<Problem> ValueChecker::check()
{
    mProblems.clear();
    SkinElementWalk::forEach(mDocument, [this](const SkinElementWalk::Visit &visit) {
        if (visit.element.ElementType() == "SCRIPT")
            return;
        checkNumbers(visit);
        checkColour(visit);
    });
    return mProblems;
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

// The first property of a key is the one read. An empty value counts as
// absent (the default is used), so it is no problem. "z" is read whole or not
// at all: a z that is no number gives way to the layer's own z.
void ValueChecker::checkNumbers(const SkinElementWalk::Visit &visit)
{
    const clsProperties &props = visit.element.Properties();
    for (const char *key : kNumberKeys) {
        const clsProperty property = props.Find(key);
        if (!property || property.valueView().isEmpty() || SkinNumber::isWholeNumber(property.valueView()))
            continue;
        const QByteArrayView value = property.valueView();
        const QString name = QLatin1String(key);
        if (value == kNoValue) {
            add(visit, ProblemCodes::NotANumber, property.Key(),
                QStringLiteral("%1 is written without a value: it reads as 0").arg(name));
            continue;
        }
        qsizetype used = 0;
        const double number = SkinNumber::leading(value, &used);
        add(visit, ProblemCodes::NotANumber, property.Key(),
            used > 0 ? QStringLiteral("%1=%2 reads as %1=%3: write %1=%3").arg(name, shown(value), numberText(number))
                     : QStringLiteral("%1=%2 is no number: it reads as 0").arg(name, shown(value)));
    }
    const clsProperty z = props.Find("z");
    if (z && !z.valueView().isEmpty() && !SkinNumber::isWholeNumber(z.valueView())) {
        add(visit, ProblemCodes::NotANumber, z.Key(),
            QStringLiteral("z=%1 is no number: the object is put in the layer's own z instead")
                .arg(z.valueView() == kNoValue ? QStringLiteral("(no value)") : shown(z.valueView())));
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
