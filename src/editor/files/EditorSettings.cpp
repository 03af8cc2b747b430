// SPDX-License-Identifier: MIT
#include "EditorSettings.h"

#include "SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

const QString kRecentFiles = QStringLiteral("RecentFiles/Entries");
const QString kPropertyColumnWidths = QStringLiteral("PropertyGrid/ColumnWidths");
const QString kShowInherited = QStringLiteral("PropertyGrid/ShowInherited");
const QString kGridStep = QStringLiteral("Canvas/GridStep");
// One entry per skin folder: "NAME=FOLDER" (no code page name holds a "=").
const QString kCodePages = QStringLiteral("CodePages/Folders");
const QString kWindowGeometry = QStringLiteral("Window/Geometry");
const QString kWindowState = QStringLiteral("Window/State");
const QString kSplitters = QStringLiteral("Window/Splitters");

// Where earlier versions kept the recent files: one path a line, in UTF-8.
const QString kFormerRecentFiles = QStringLiteral("RecentFiles.txt");

} // namespace

EditorSettings::EditorSettings(const SettingsFile &settings)
    : mPath(settings.editorSettingsPath())
{
}

QStringList EditorSettings::recentFiles() const
{
    // An empty list is kept as no value at all: whether the key is there tells.
    if (!QSettings(mPath, QSettings::IniFormat).contains(kRecentFiles))
        return formerRecentFiles();
    return read(kRecentFiles).toStringList();
}

void EditorSettings::setRecentFiles(const QStringList &paths) const
{
    write(kRecentFiles, paths);
}

QStringList EditorSettings::formerRecentFiles() const
{
    QFile file(QFileInfo(mPath).dir().filePath(kFormerRecentFiles));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList paths;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QString path = QString::fromUtf8(line.trimmed());
        if (!path.isEmpty())
            paths << path;
    }
    return paths;
}

QList<int> EditorSettings::propertyColumnWidths() const
{
    QList<int> widths;
    for (const QVariant &width : read(kPropertyColumnWidths).toList()) {
        bool ok = false;
        const int value = width.toInt(&ok);
        if (!ok || value <= 0)
            return {};
        widths << value;
    }
    return widths;
}

void EditorSettings::setPropertyColumnWidths(const QList<int> &widths) const
{
    QVariantList list;
    for (int width : widths)
        list << width;
    write(kPropertyColumnWidths, list);
}

bool EditorSettings::showInherited() const
{
    return read(kShowInherited, true).toBool();
}

void EditorSettings::setShowInherited(bool show) const
{
    write(kShowInherited, show);
}

int EditorSettings::gridStep() const
{
    bool ok = false;
    const int step = read(kGridStep, 0).toInt(&ok);
    return ok && step > 0 ? step : 0;
}

void EditorSettings::setGridStep(int step) const
{
    write(kGridStep, step > 0 ? step : 0);
}

QString EditorSettings::codePageFor(const QString &skinFolder) const
{
    const QString folder = QDir::cleanPath(skinFolder);
    for (const QString &entry : read(kCodePages).toStringList()) {
        const qsizetype equals = entry.indexOf(QLatin1Char('='));
        if (equals > 0 && QDir::cleanPath(entry.mid(equals + 1)) == folder)
            return entry.left(equals);
    }
    return {};
}

void EditorSettings::setCodePageFor(const QString &skinFolder, const QString &codePage) const
{
    const QString folder = QDir::cleanPath(skinFolder);
    QStringList entries;
    for (const QString &entry : read(kCodePages).toStringList()) {
        const qsizetype equals = entry.indexOf(QLatin1Char('='));
        if (equals > 0 && QDir::cleanPath(entry.mid(equals + 1)) != folder)
            entries << entry;
    }
    entries << codePage + QLatin1Char('=') + folder;
    write(kCodePages, entries);
}

QVariant EditorSettings::read(const QString &key, const QVariant &absent) const
{
    const QSettings settings(mPath, QSettings::IniFormat);
    return settings.contains(key) ? settings.value(key) : absent;
}

void EditorSettings::write(const QString &key, const QVariant &value) const
{
    QDir().mkpath(QFileInfo(mPath).absolutePath());
    QSettings settings(mPath, QSettings::IniFormat);
    settings.setValue(key, value);
}

QByteArray EditorSettings::windowGeometry() const
{
    return read(kWindowGeometry).toByteArray();
}

void EditorSettings::setWindowGeometry(const QByteArray &geometry) const
{
    write(kWindowGeometry, geometry);
}

QByteArray EditorSettings::windowState() const
{
    return read(kWindowState).toByteArray();
}

void EditorSettings::setWindowState(const QByteArray &state) const
{
    write(kWindowState, state);
}

QList<int> EditorSettings::splitterPositions() const
{
    QList<int> positions;
    for (const QVariant &value : read(kSplitters).toList()) {
        bool ok = false;
        const int position = value.toInt(&ok);
        if (!ok)
            return {};
        positions << position;
    }
    return positions;
}

void EditorSettings::setSplitterPositions(const QList<int> &positions) const
{
    QVariantList values;
    for (int position : positions)
        values << position;
    write(kSplitters, values);
}
