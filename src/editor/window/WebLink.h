// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

class Dialogs;
class QWidget;

// Opens web addresses in the user's browser. The only place of the editor that
// asks the operating system about browsers; what it asks is in one file per
// platform (WebLink_win.cpp, WebLink_unix.cpp).
class WebLink
{
public:
    // `programFolder` is where Windows' browser check writes its throw-away
    // page; empty: the folder of the executable.
    explicit WebLink(Dialogs &dialogs, const QString &programFolder = QString());
    virtual ~WebLink();

    // Opens `address` in the default browser, with the hourglass meanwhile. With
    // no browser: "Could not find associated Browser" ("Browser Not Found"); when
    // the browser could not be started: "Web Page not Opened" ("URL Failed").
    void OpenURL(QWidget *window, const QString &address);

    // Whether a program is associated with web pages. On Windows: the program
    // the shell finds for the page "~TEST.HTM" written into the program's
    // folder for the question. On Linux: xdg-mime names a handler for
    // "text/html" or "x-scheme-handler/http", or xdg-open is there.
    virtual bool HasBrowser() const;

    // The throw-away page of the browser check on Windows.
    static QString testPageName() { return QStringLiteral("~TEST.HTM"); }
    QString programFolder() const;

protected:
    // Hands the address to the desktop (on Windows the shell's "Open", owned by
    // `window`); false when that failed.
    virtual bool openInBrowser(QWidget *window, const QUrl &url);

private:
    Dialogs &mDialogs;
    QString mProgramFolder;
};
