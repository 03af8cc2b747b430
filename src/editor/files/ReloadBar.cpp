// SPDX-License-Identifier: MIT
#include "ReloadBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

ReloadBar::ReloadBar(QWidget *parent)
    : QFrame(parent)
    , mText(new QLabel)
    , mReload(new QPushButton(QStringLiteral("Reload")))
    , mKeep(new QPushButton(QStringLiteral("Keep")))
{
    setObjectName(QStringLiteral("reloadBar"));
    mText->setObjectName(QStringLiteral("reloadText"));
    mText->setWordWrap(true);
    mReload->setObjectName(QStringLiteral("btnReload"));
    mReload->setToolTip(QStringLiteral("Read the skin again from disk; unsaved changes are lost"));
    mKeep->setObjectName(QStringLiteral("btnKeep"));
    mKeep->setToolTip(QStringLiteral("Keep the skin as it is in the editor"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(mText, 1);
    layout->addWidget(mReload);
    layout->addWidget(mKeep);
    hide();

    connect(mReload, &QPushButton::clicked, this, [this] {
        hide();
        emit reloadChosen();
    });
    connect(mKeep, &QPushButton::clicked, this, [this] {
        hide();
        emit keepChosen();
    });
}

void ReloadBar::offer(const QString &text)
{
    mText->setText(text);
    show();
}

QString ReloadBar::text() const
{
    return mText->text();
}
