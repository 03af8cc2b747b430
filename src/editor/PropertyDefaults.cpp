#include "PropertyDefaults.h"

#include "clsProperty.h"

#include <initializer_list>

namespace {

bool oneOf(const QByteArray &name, std::initializer_list<const char *> names)
{
    for (const char *candidate : names) {
        if (name == candidate)
            return true;
    }
    return false;
}

} // namespace

QByteArray PropertyDefaults::valueFor(const QByteArray &name)
{
    if (oneOf(name, { "x", "y", "z", "w", "h" }))
        return QByteArrayLiteral("0");
    if (oneOf(name, { "font", "text", "value", "align", "valign", "bmpalign", "bmpvalign",
                      "element_template", "listmodel", "iconspr", "bmp" }))
        return QByteArrayLiteral("\"\"");
    if (oneOf(name, { "onrelease", "onlongclick" }))
        return QByteArrayLiteral("''");
    if (oneOf(name, { "hide", "id", "nostress", "simpleclicklist", "disable", "invert" }))
        return clsProperty::noValue();
    return QByteArray();
}
