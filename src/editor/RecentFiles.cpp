// SPDX-License-Identifier: MIT
#include "RecentFiles.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSaveFile>
#include <QFile>

RecentFiles::RecentFiles(const QString &storePath, QMenu *menu, QObject *parent)
    : QObject(parent)
    , mStorePath(storePath)
    , mMenu(menu)
{
    setObjectName(QStringLiteral("RecentFiles"));
    connect(mMenu, &QMenu::aboutToShow, this, &RecentFiles::fillMenu);
    load();
    fillMenu();
}

QString RecentFiles::storePathBeside(const QString &settingsPath)
{
    return QFileInfo(settingsPath).absoluteDir().filePath(QStringLiteral("RecentFiles.txt"));
}

void RecentFiles::add(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    mEntries.removeAll(absolute);
    mEntries.prepend(absolute);
    while (mEntries.size() > kMostEntries)
        mEntries.removeLast();
    store();
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

// One path a line, in UTF-8; a missing or unreadable file is an empty list.
void RecentFiles::load()
{
    QFile file(mStorePath);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QString path = QString::fromUtf8(line.trimmed());
        if (!path.isEmpty() && !mEntries.contains(path) && mEntries.size() < kMostEntries)
            mEntries << path;
    }
}

// Failures are silent, as for the settings file: the list is a convenience.
void RecentFiles::store() const
{
    QDir().mkpath(QFileInfo(mStorePath).absolutePath());
    QSaveFile file(mStorePath);
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (const QString &path : mEntries)
        file.write(path.toUtf8() + '\n');
    file.commit();
}
