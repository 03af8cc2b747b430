// SPDX-License-Identifier: MIT
#pragma once

#include "SkinReadError.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

class ProblemsPanel;
class QDockWidget;
class QLabel;
class QMainWindow;
class QStatusBar;
class SkinDocument;

// Keeps the window's Problems panel up to date: the skin is checked after it
// is opened and again once the user pauses after a change. A double-click on a
// problem makes its node current and shows its file and line in the status
// bar, which also counts the errors and warnings.
class ProblemsController : public QObject
{
    Q_OBJECT

public:
    // The panel goes into a dock of the window, the counts into its status bar.
    ProblemsController(SkinDocument &document, QMainWindow &window, QStatusBar &statusBar,
                       QObject *parent = nullptr);

    // A skin was just opened: what its reading met (the checker reports each
    // as a problem) and whether a whole folder was read.
    void skinOpened(const QVector<SkinReadError> &readingErrors, bool wholeSkin);
    // Checks at once, without waiting for the user to pause.
    void checkNow();
    bool checkPending() const { return mPause.isActive(); }

    ProblemsPanel *panel() const { return mPanel; }
    QDockWidget *dock() const { return mDock; }

private:
    void documentChanged();
    void forgetSkin();
    void jumpTo(const QByteArray &nodeKey, const QString &file, qint64 line);
    void showCounts(int errors, int warnings);

    SkinDocument &mDocument;
    QDockWidget *mDock;
    ProblemsPanel *mPanel;
    QLabel *mCounts;
    QLabel *mPlace;
    QTimer mPause;
    QVector<SkinReadError> mReadingErrors;
    bool mWholeSkin = false;
    bool mSkinOpen = false;
};
