// SPDX-License-Identifier: MIT
#include "MainToolbar.h"

#include "ToolbarImages.h"

#include <QAction>
#include <QToolBar>

namespace {

struct ToolbarButton
{
    const char *key;
    const char *caption;
    const char *toolTip;
};

const ToolbarButton kButtons[] = {
    { "Open", "Open", "Open Template File" },
    { "Dir", "All", "Open All Template Directory" },
    { "Save", "Save", "Save Skin" },
    { "Lock", "Move", "Lock move" },
    { "Settings", "Settings", "Edit General Settings" },
    { "Prev", "Prev", "Previous Layer" },
    { "Next", "Next", "Next Layer" },
    { "About", "About", "About" },
};

} // namespace

namespace MainToolbar {

QToolBar *create(QWidget &window, const ToolbarImages &images)
{
    auto *toolbar = new QToolBar(QStringLiteral("tlbMain"), &window);
    toolbar->setObjectName(QStringLiteral("tlbMain"));
    toolbar->setMovable(false);
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolbar->setIconSize(QSize(24, 24));
    for (const ToolbarButton &entry : kButtons) {
        const QString key = QString::fromLatin1(entry.key);
        QAction *action = toolbar->addAction(QString::fromLatin1(entry.caption));
        action->setObjectName(key);
        action->setToolTip(QString::fromLatin1(entry.toolTip));
        action->setIcon(images.image(key == QLatin1String("Lock") ? QStringLiteral("LockOff") : key));
        action->setCheckable(key == QLatin1String("Lock"));
    }
    return toolbar;
}

QAction *button(const QToolBar &toolbar, const QString &key)
{
    for (QAction *action : toolbar.actions()) {
        if (action->objectName() == key)
            return action;
    }
    return nullptr;
}

} // namespace MainToolbar
