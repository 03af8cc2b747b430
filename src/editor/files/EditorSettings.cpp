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
