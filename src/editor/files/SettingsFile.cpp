// SPDX-License-Identifier: MIT
#include "SettingsFile.h"

#include "AtomicFileWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

QByteArray firstLine(const QByteArray &bytes)
{
    qsizetype end = 0;
    while (end < bytes.size() && bytes.at(end) != '\r' && bytes.at(end) != '\n')
        ++end;
    return bytes.left(end);
}

// Only blanks are trimmed, as the file's one line is a folder path.
QByteArray trimmedBlanks(QByteArray text)
{
    while (text.startsWith(' '))
        text.remove(0, 1);
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

// Whether a file can be created in `folder`, found by creating one. The
// folder's permission bits do not tell: on Windows, Program Files carries no
// read-only mark, yet only an administrator may add files to it.
bool acceptsNewFiles(const QString &folder)
{
    if (!QFileInfo(folder).isDir())
        return false;
    QTemporaryFile probe(QDir(folder).filePath(QStringLiteral("~korvi-XXXXXX.tmp")));
    return probe.open();
}

} // namespace

SettingsFile::SettingsFile(const QString &programFolder, const QString &configFolder)
    : mProgramFolder(programFolder)
    , mConfigFolder(configFolder)
{
}

SettingsFile SettingsFile::forApplication()
{
    return SettingsFile(QCoreApplication::applicationDirPath(),
                        QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
}

QString SettingsFile::path() const
{
    const bool programWritable = acceptsNewFiles(mProgramFolder);
    const QString folder = programWritable || mConfigFolder.isEmpty() ? mProgramFolder : mConfigFolder;
    return QDir(folder).filePath(fileName());
}

void SettingsFile::ReadSettings(QString &skinDirectory) const
{
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray line = trimmedBlanks(firstLine(file.readAll()));
    if (file.error() != QFileDevice::NoError)
        return;
    skinDirectory = line.isEmpty() ? mProgramFolder : QString::fromLocal8Bit(line);
}

void SettingsFile::WriteSettings(const QString &skinDirectory) const
{
    const QString target = path();
    QDir().mkpath(QFileInfo(target).absolutePath());
    // Settings fail silently, but a failed write never leaves half a file.
    QString error;
    AtomicFileWriter::writeWhole(target, skinDirectory.toLocal8Bit() + "\r\n", error);
}

QString SettingsFile::editorSettingsPath() const
{
    return QFileInfo(path()).dir().filePath(QStringLiteral("Editor.ini"));
}
