// SPDX-License-Identifier: MIT
#include "PropertyBag.h"

#include <QMetaProperty>
#include <QWidget>

namespace {

// Properties declared after the toolkit's own classes: those of our controls.
QList<QMetaProperty> ownProperties(const QObject &control)
{
    const QMetaObject *meta = control.metaObject();
    const int first = QWidget::staticMetaObject.propertyCount();
    QList<QMetaProperty> list;
    for (int i = first; i < meta->propertyCount(); ++i) {
        const QMetaProperty p = meta->property(i);
        if (p.isStored() && p.isWritable())
            list << p;
    }
    return list;
}

bool refersToWidget(const QMetaProperty &p)
{
    return p.metaType().flags().testFlag(QMetaType::PointerToQObject);
}

QVariant savedValue(const QObject &control, const QMetaProperty &p)
{
    const QVariant value = p.read(&control);
    if (!refersToWidget(p))
        return value;
    const QObject *target = value.value<QObject *>();
    return target ? target->objectName() : QString();
}

void restoreValue(QObject &control, const QMetaProperty &p, const QVariant &saved)
{
    if (!refersToWidget(p)) {
        p.write(&control, saved);
        return;
    }
    QObject *target = nullptr;
    const QString name = saved.toString();
    if (!name.isEmpty() && control.parent())
        target = control.parent()->findChild<QObject *>(name, Qt::FindDirectChildrenOnly);
    if (target)
        p.write(&control, QVariant::fromValue(target));
}

} // namespace

void PropertyBag::write(const QObject &control, QVariantMap &bag)
{
    for (const QMetaProperty &p : ownProperties(control))
        bag.insert(QString::fromLatin1(p.name()), savedValue(control, p));
}

void PropertyBag::read(QObject &control, const QVariantMap &bag)
{
    for (const QMetaProperty &p : ownProperties(control)) {
        const auto it = bag.constFind(QString::fromLatin1(p.name()));
        if (it != bag.constEnd())
            restoreValue(control, p, *it);
    }
}

void PropertyBag::write(const QObject &control, QSettings &settings)
{
    for (const QMetaProperty &p : ownProperties(control))
        settings.setValue(QString::fromLatin1(p.name()), savedValue(control, p));
}

void PropertyBag::read(QObject &control, QSettings &settings)
{
    for (const QMetaProperty &p : ownProperties(control)) {
        const QString name = QString::fromLatin1(p.name());
        if (settings.contains(name))
            restoreValue(control, p, settings.value(name));
    }
}

QStringList PropertyBag::names(const QObject &control)
{
    QStringList list;
    for (const QMetaProperty &p : ownProperties(control))
        list << QString::fromLatin1(p.name());
    return list;
}
