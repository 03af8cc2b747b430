// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QMenu;

// The last skin files and folders opened, newest first, kept between runs in
// a file of their own beside the settings file (which holds the skin
// directory alone). The menu lists them; one that no longer exists is shown
// greyed.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMostEntries = 10;

    // `storePath`: the file the list is kept in; `menu`: the menu that lists it.
    RecentFiles(const QString &storePath, QMenu *menu, QObject *parent = nullptr);

    // The storage file beside the settings file at `settingsPath`.
    static QString storePathBeside(const QString &settingsPath);

    QStringList entries() const { return mEntries; }
    // `path` was opened: it becomes the first entry.
    void add(const QString &path);

    // Fills the menu anew; done each time it is shown.
    void fillMenu();

signals:
    void openRequested(const QString &path);

private:
    void load();
    void store() const;

    QString mStorePath;
    QStringList mEntries;
    QMenu *mMenu = nullptr;
};
