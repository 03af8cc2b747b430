// SPDX-License-Identifier: MIT
#include "WebLink.h"

#ifndef Q_OS_WIN

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

bool WebLink::HasBrowser() const
{
#ifdef Q_OS_LINUX
    return xdgMimeHasHandler(QStringLiteral("text/html"))
        || xdgMimeHasHandler(QStringLiteral("x-scheme-handler/http"))
        || !QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty();
#else
    // macOS always has a handler for web addresses.
    return true;
#endif
}

bool WebLink::openInBrowser(QWidget *window, const QUrl &url)
{
    Q_UNUSED(window); // the desktop's browser opens on its own
    return QDesktopServices::openUrl(url);
}

#endif
