// SPDX-License-Identifier: MIT
#include "WebLink.h"

#include "Dialogs.h"
#include "HourglassCursor.h"

#include <QCoreApplication>

// HasBrowser and openInBrowser are the platform's: WebLink_win.cpp, WebLink_unix.cpp.

WebLink::WebLink(Dialogs &dialogs, const QString &programFolder)
    : mDialogs(dialogs)
    , mProgramFolder(programFolder)
{
}

WebLink::~WebLink() = default;

QString WebLink::programFolder() const
{
    return mProgramFolder.isEmpty() ? QCoreApplication::applicationDirPath() : mProgramFolder;
}

void WebLink::OpenURL(QWidget *window, const QString &address)
{
    HourglassCursor hourglass;
    if (!HasBrowser()) {
        hourglass.restore();
        mDialogs.message(QStringLiteral("Browser Not Found"),
                         QStringLiteral("Could not find associated Browser"), Dialogs::Icon::Warning);
        return;
    }
    if (!openInBrowser(window, QUrl::fromUserInput(address))) {
        hourglass.restore();
        mDialogs.message(QStringLiteral("URL Failed"), QStringLiteral("Web Page not Opened"),
                         Dialogs::Icon::Warning);
    }
}
