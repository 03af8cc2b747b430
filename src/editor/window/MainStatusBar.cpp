// SPDX-License-Identifier: MIT
#include "MainStatusBar.h"

#include <QLabel>
#include <QStatusBar>

namespace MainStatusBar {

QStatusBar *create(QList<QLabel *> &panels)
{
    auto *bar = new QStatusBar;
    bar->setObjectName(QStringLiteral("stbMain"));
    for (int i = 0; i < 3; ++i) {
        auto *panel = new QLabel;
        panel->setObjectName(QStringLiteral("stbPanel%1").arg(i + 1));
        panel->setMinimumWidth(i == 2 ? 120 : 220);
        bar->addWidget(panel, i == 0 ? 2 : 1);
        panels << panel;
    }
    return bar;
}

} // namespace MainStatusBar
