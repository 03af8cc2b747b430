// SPDX-License-Identifier: MIT
#pragma once

#include "EditorSettings.h"

#include <QObject>
#include <QString>
#include <QStringList>

class QMenu;

// The last skin files and folders opened, newest first, kept between runs in
// the editor's settings. The menu lists them; one that no longer exists is
// shown greyed.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMostEntries = 10;

    // `settings`: where the list is kept; `menu`: the menu that lists it.
    RecentFiles(const EditorSettings &settings, QMenu *menu, QObject *parent = nullptr);

    QStringList entries() const { return mEntries; }
    // `path` was opened: it becomes the first entry.
    void add(const QString &path);

    // Fills the menu anew; done each time it is shown.
    void fillMenu();

signals:
    void openRequested(const QString &path);

private:
    void load();

    EditorSettings mSettings;
    QStringList mEntries;
    QMenu *mMenu = nullptr;
};
