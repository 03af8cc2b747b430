// SPDX-License-Identifier: MIT
#include "frmAbout.h"

#include "ApplicationInfo.h"
#include "LinkLabel.h"
#include "WebLink.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

frmAbout::frmAbout(WebLink &web, QWidget *parent)
    : QDialog(parent)
    , mWeb(web)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral(":: Info about ") + ApplicationInfo::title());

    auto *name = new QLabel(ApplicationInfo::title(), this);
    QFont big = name->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.4);
    name->setFont(big);

    lblVersion = new QLabel(QStringLiteral("Version ") + ApplicationInfo::version()
                                + QStringLiteral("\r\n") + ApplicationInfo::credit(),
                            this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));

    lblLink = new LinkLabel(QStringLiteral("Home page"), this);
    lblLink->setObjectName(QStringLiteral("lblLink"));
    lblLink2 = new LinkLabel(ApplicationInfo::issuesPage(), this);
    lblLink2->setObjectName(QStringLiteral("lblLink2"));
    connect(lblLink, &LinkLabel::clicked, this, [this] { mWeb.OpenURL(this, ApplicationInfo::homePage()); });
    connect(lblLink2, &LinkLabel::clicked, this, [this] { mWeb.OpenURL(this, lblLink2->text()); });

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(name);
    layout->addWidget(lblVersion);
    layout->addWidget(lblLink);
    layout->addWidget(lblLink2);
    layout->addWidget(buttons);
}
