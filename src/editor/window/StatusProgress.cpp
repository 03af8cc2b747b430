// SPDX-License-Identifier: MIT
#include "StatusProgress.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProgressBar>

#include <limits>

StatusProgress::StatusProgress(QObject *parent)
    : QObject(parent)
{
    mBar = new QProgressBar;
    mBar->setObjectName(QStringLiteral("stbProgress"));
    mBar->setMaximumWidth(160);
    mBar->setTextVisible(false);
    mBar->hide();
}

void StatusProgress::begin(qint64 maximum)
{
    // The bar counts in int: large byte counts are scaled down.
    mScale = 1;
    while (maximum / mScale > std::numeric_limits<int>::max())
        mScale *= 1024;
    mBar->setRange(0, int(maximum / mScale));
    mBar->setValue(0);
    mBar->show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void StatusProgress::advance(qint64 done)
{
    mBar->setValue(int(done / mScale));
    // Only painting: no user input runs in the middle of the work.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void StatusProgress::beginFiles(const QStringList &files, qint64 threshold)
{
    qint64 total = 0;
    for (const QString &file : files)
        total += QFileInfo(file).size();
    mDone = 0;
    mCountingFiles = total > threshold;
    if (mCountingFiles)
        begin(total);
}

void StatusProgress::fileDone(const QString &file)
{
    if (!mCountingFiles)
        return;
    mDone += QFileInfo(file).size();
    advance(mDone);
}

void StatusProgress::end()
{
    mCountingFiles = false;
    mBar->hide();
    mBar->reset();
}
