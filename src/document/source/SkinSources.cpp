// SPDX-License-Identifier: MIT
#include "SkinSources.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString comparablePath(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

int SkinSources::add(const QString &path, const QByteArray &bytes, bool imported)
{
    if (count() >= kMostFiles)
        return 0;
    mFiles.push_back(std::make_unique<SkinSourceFile>(path, bytes, imported));
    return count();
}

SkinSourceFile *SkinSources::file(int number) const
{
    return number >= 1 && number <= count() ? mFiles[size_t(number - 1)].get() : nullptr;
}

int SkinSources::numberOf(const QString &path) const
{
    const QString wanted = comparablePath(path);
    for (int number = count(); number >= 1; --number) {
        if (!file(number)->path().isEmpty() && comparablePath(file(number)->path()) == wanted)
            return number;
    }
    return 0;
}

int SkinSources::supersede(int number, std::unique_ptr<SkinSourceFile> file)
{
    const bool imported = mFiles[size_t(number - 1)]->imported();
    if (count() >= kMostFiles) {
        mFiles[size_t(number - 1)] = std::move(file);
        return number;
    }
    mFiles[size_t(number - 1)] = std::make_unique<SkinSourceFile>(QString(), QByteArray(), imported);
    mFiles.push_back(std::move(file));
    return count();
}

int SkinSources::adopt(std::unique_ptr<SkinSourceFile> file)
{
    if (count() >= kMostFiles)
        return 0;
    mFiles.push_back(std::move(file));
    return count();
}

std::unique_ptr<SkinSourceFile> SkinSources::take(int number)
{
    return std::move(mFiles[size_t(number - 1)]);
}

qsizetype SkinSources::memoryUsed() const
{
    qsizetype bytes = qsizetype(mFiles.capacity() * sizeof(void *));
    for (const auto &file : mFiles)
        bytes += file->memoryUsed();
    return bytes;
}
