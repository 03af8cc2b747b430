// SPDX-License-Identifier: MIT
#include "WebLink.h"

#include "Dialogs.h"
#include "HourglassCursor.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>

namespace {

#ifdef Q_OS_LINUX
bool xdgMimeHasHandler(const QString &type)
{
    const QString xdgMime = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (xdgMime.isEmpty())
        return false;
    QProcess query;
    query.start(xdgMime, { QStringLiteral("query"), QStringLiteral("default"), type });
    if (!query.waitForFinished(3000))
        return false;
    return query.exitCode() == 0 && !query.readAllStandardOutput().trimmed().isEmpty();
}
#endif

} // namespace

WebLink::WebLink(Dialogs &dialogs)
    : mDialogs(dialogs)
{
}

WebLink::~WebLink() = default;

void WebLink::OpenURL(QWidget *window, const QString &address)
{
    Q_UNUSED(window); // the desktop's browser opens on its own
    HourglassCursor hourglass;
    if (!HasBrowser()) {
        hourglass.restore();
        mDialogs.message(QStringLiteral("Browser Not Found"),
                         QStringLiteral("Could not find associated Browser"), Dialogs::Icon::Warning);
        return;
    }
    if (!openInBrowser(QUrl::fromUserInput(address))) {
        hourglass.restore();
        mDialogs.message(QStringLiteral("URL Failed"), QStringLiteral("Web Page not Opened"),
                         Dialogs::Icon::Warning);
    }
}

bool WebLink::HasBrowser() const
{
#ifdef Q_OS_LINUX
    return xdgMimeHasHandler(QStringLiteral("text/html"))
        || xdgMimeHasHandler(QStringLiteral("x-scheme-handler/http"))
        || !QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty();
#else
    // Windows and macOS always have a handler for web addresses.
    return true;
#endif
}

bool WebLink::openInBrowser(const QUrl &url)
{
    return QDesktopServices::openUrl(url);
}
