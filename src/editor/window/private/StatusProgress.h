// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QProgressBar;

// A progress bar in the status bar for long work (opening a large folder,
// saving many files): hidden until the work begins, and drawn again after
// each step so that the window shows that it is busy.
class StatusProgress : public QObject
{
    Q_OBJECT

public:
    explicit StatusProgress(QObject *parent = nullptr);

    QProgressBar *bar() const { return mBar; }

    // `maximum` 0: work whose steps are not known.
    void begin(qint64 maximum);
    void advance(qint64 done);
    void end();

    // Reading `files` one after another, counted by their sizes: the bar is
    // shown only when together they hold more than `threshold` bytes.
    void beginFiles(const QStringList &files, qint64 threshold);
    void fileDone(const QString &file);

private:
    QProgressBar *mBar = nullptr;
    qint64 mScale = 1;
    qint64 mDone = 0;
    bool mCountingFiles = false;
};
