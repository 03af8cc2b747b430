// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

// Watches the files a skin was read from and tells when one of them is no
// longer what the editor read: changed, or deleted. Each file is known by its
// contents, so a file written again with the same bytes, or touched, is no
// change; the folders are watched too, because a program that saves by
// writing a new file and renaming it over the old one ends the file's watch.
class SkinFileWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SkinFileWatcher(QObject *parent = nullptr);

    // Watches these files from now on, as they are now on disk.
    void watch(const QStringList &files);
    void stop();
    // What is on disk now is what the editor knows (it has just saved).
    void takeAsKnown();
    QStringList files() const { return mKnown.keys(); }

signals:
    // After the files settled: those whose contents changed, and those gone.
    void filesChanged(const QStringList &changed, const QStringList &deleted);

private:
    struct Fingerprint
    {
        bool exists = false;
        qint64 size = 0;
        QDateTime modified;
        QByteArray hash;
    };

    static Fingerprint fingerprintOf(const QString &path, const Fingerprint *known);
    void somethingMoved(const QString &path);
    void report();
    void watchOnDisk();

    QFileSystemWatcher mWatcher;
    QHash<QString, Fingerprint> mKnown;
    QTimer mSettle;
};
