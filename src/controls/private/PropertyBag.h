// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QVariantMap>

class QObject;
class QWidget;

// The saved look of a control: every design-time property that the control's own
// class declares (not those of the toolkit's base classes), under the property's
// own name, in the order of declaration. A property that refers to another widget
// is saved as that widget's object name and found again among the control's
// siblings. Reading starts from the control's defaults (the caller resets the
// control first), so a missing name keeps its default.
class PropertyBag
{
public:
    static void write(const QObject &control, QVariantMap &bag);
    static void read(QObject &control, const QVariantMap &bag);
    // The same through a settings group that the caller has opened.
    static void write(const QObject &control, QSettings &settings);
    static void read(QObject &control, QSettings &settings);
    // The names of the saved properties, in order of declaration.
    static QStringList names(const QObject &control);
};
