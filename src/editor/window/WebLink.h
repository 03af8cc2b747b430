// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

class Dialogs;
class QWidget;

// Opens web addresses in the user's browser. The only place of the editor that
// asks the operating system anything.
class WebLink
{
public:
    explicit WebLink(Dialogs &dialogs);
    virtual ~WebLink();

    // Opens `address` in the default browser, with the hourglass meanwhile. With
    // no browser: "Could not find associated Browser" ("Browser Not Found"); when
    // the browser could not be started: "Web Page not Opened" ("URL Failed").
    void OpenURL(QWidget *window, const QString &address);

    // Whether a program is associated with web pages. On Linux: xdg-mime names a
    // handler for "text/html" or "x-scheme-handler/http", or xdg-open is there.
    virtual bool HasBrowser() const;

protected:
    // Hands the address to the desktop; false when that failed.
    virtual bool openInBrowser(const QUrl &url);

private:
    Dialogs &mDialogs;
};
