// SPDX-License-Identifier: MIT
#include "RecentFiles.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

RecentFiles::RecentFiles(const EditorSettings &settings, QMenu *menu, QObject *parent)
    : QObject(parent)
    , mSettings(settings)
    , mMenu(menu)
{
    setObjectName(QStringLiteral("RecentFiles"));
    connect(mMenu, &QMenu::aboutToShow, this, &RecentFiles::fillMenu);
    load();
    fillMenu();
}

void RecentFiles::add(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    mEntries.removeAll(absolute);
    mEntries.prepend(absolute);
    while (mEntries.size() > kMostEntries)
        mEntries.removeLast();
    // Failures are silent, as for the settings file: the list is a convenience.
    mSettings.setRecentFiles(mEntries);
    fillMenu();
}

void RecentFiles::fillMenu()
{
    mMenu->clear();
    for (const QString &path : mEntries) {
        QAction *entry = mMenu->addAction(QDir::toNativeSeparators(path));
        entry->setData(path);
        entry->setEnabled(QFileInfo::exists(path));
        connect(entry, &QAction::triggered, this, [this, path] { emit openRequested(path); });
    }
    mMenu->setEnabled(!mEntries.isEmpty());
}

// A list edited by hand may repeat a path or run long.
void RecentFiles::load()
{
    for (const QString &path : mSettings.recentFiles()) {
        if (!path.isEmpty() && !mEntries.contains(path) && mEntries.size() < kMostEntries)
            mEntries << path;
    }
}
