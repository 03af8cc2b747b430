// SPDX-License-Identifier: MIT
#include "WebLink.h"

#ifdef Q_OS_WIN

#include <QDir>
#include <QFile>
#include <QWidget>

#include <qt_windows.h>
#include <shellapi.h>

namespace {

// Writes the throw-away page; false when the folder cannot take it.
bool writeTestPage(const QString &path)
{
    QFile page(path);
    if (!page.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return page.write("<HTML> <\\HTML>") == 14 && page.flush();
}

bool shellFindsProgramFor(const QString &path)
{
    const std::wstring file = QDir::toNativeSeparators(path).toStdWString();
    wchar_t program[MAX_PATH] = {};
    const auto result = reinterpret_cast<INT_PTR>(FindExecutableW(file.c_str(), nullptr, program));
    return result > 32 && program[0] != 0;
}

} // namespace

// The shell is asked which program opens a page: an .htm file is written into
// the program's folder, looked up and deleted again. A program installed in a
// folder the user cannot write (Program Files) would always be told "no
// browser" that way, so the page then goes to the user's temporary folder.
bool WebLink::HasBrowser() const
{
    QString page = QDir(programFolder()).filePath(testPageName());
    if (!writeTestPage(page)) {
        page = QDir(QDir::tempPath()).filePath(testPageName());
        if (!writeTestPage(page))
            return false;
    }
    const bool found = shellFindsProgramFor(page);
    QFile::remove(page);
    return found;
}

bool WebLink::openInBrowser(QWidget *window, const QUrl &url)
{
    const HWND owner = window ? reinterpret_cast<HWND>(window->window()->winId()) : nullptr;
    const std::wstring address = url.toString().toStdWString();
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(owner, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    // Results up to 32 are the shell's errors.
    return result > 32;
}

#endif
