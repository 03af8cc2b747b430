// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class SettingsFile;

// The editor's own settings, all in "Editor.ini" beside "Settings.ini" (which
// keeps its one line, the default skin directory): the recent files, the
// widths of the property grid's columns, whether the grid lists inherited
// values, the grid step the moving frame snaps to, the code page chosen
// for each skin folder, and the window's place with its panels and bars. Each value is read and
// written when it is used; failures are silent, as for "Settings.ini".
class EditorSettings
{
public:
    explicit EditorSettings(const SettingsFile &settings);

    QString path() const { return mPath; }

    // The last skin files and folders opened, newest first. A list kept by an
    // earlier version of the editor in "RecentFiles.txt" is taken over the
    // first time; that file is not written again.
    QStringList recentFiles() const;
    void setRecentFiles(const QStringList &paths) const;

    // In twips, as the user left them; empty when never set.
    QList<int> propertyColumnWidths() const;
    void setPropertyColumnWidths(const QList<int> &widths) const;

    // True unless the user turned the list of inherited values off.
    bool showInherited() const;
    void setShowInherited(bool show) const;

    // The code page the user chose for the skin in `skinFolder` (its IANA
    // name), or empty when none was chosen.
    QString codePageFor(const QString &skinFolder) const;
    void setCodePageFor(const QString &skinFolder, const QString &codePage) const;

    // In the frame's pixels; 0, as on a first start, means no snapping.
    int gridStep() const;
    void setGridStep(int step) const;

    // The main window's place and size, and its docks' and toolbars' layout,
    // as Qt saves them; empty on a first start.
    QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &geometry) const;
    QByteArray windowState() const;
    void setWindowState(const QByteArray &state) const;
    // The places of the window's splitter bars, in twips; empty on a first start.
    QList<int> splitterPositions() const;
    void setSplitterPositions(const QList<int> &positions) const;

private:
    QStringList formerRecentFiles() const;
    // A value kept, or `absent` when the file does not hold it.
    QVariant read(const QString &key, const QVariant &absent = QVariant()) const;
    void write(const QString &key, const QVariant &value) const;

    QString mPath;
};
