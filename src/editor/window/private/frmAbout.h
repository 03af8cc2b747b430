// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class LinkLabel;
class QLabel;
class WebLink;

// The about box: the program's name and version, a credit line, and links to
// the program's web pages.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    frmAbout(WebLink &web, QWidget *parent = nullptr);

    QLabel *lblVersion;
    // Opens the program's home page.
    LinkLabel *lblLink;
    // Opens the address it shows.
    LinkLabel *lblLink2;

private:
    WebLink &mWeb;
};
