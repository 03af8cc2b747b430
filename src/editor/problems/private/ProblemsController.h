// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"
#include "SkinReadError.h"

#include <QObject>
#include <QTimer>
#include <QVector>
#include <climits>
#include <memory>

class ProblemsPanel;
class QDockWidget;
class QLabel;
class QMainWindow;
class QStatusBar;
class SkinChecker;
class SkinDocument;

// Keeps the window's Problems panel up to date: the skin is checked after it
// is opened and again once the user pauses after a change. The check goes on
// in slices between the window's events, so a large skin never freezes the
// window; the panel and the counts change when a check is complete, and a
// change of the document meanwhile drops the check and starts a new one. A
// double-click on a problem makes its node current and shows its file and
// line in the status bar, which also counts the errors and warnings.
class ProblemsController : public QObject
{
    Q_OBJECT

public:
    // The panel goes into a dock of the window, the counts into its status bar.
    ProblemsController(SkinDocument &document, QMainWindow &window, QStatusBar &statusBar,
                       QObject *parent = nullptr);
    ~ProblemsController() override;

    // A skin was just opened: what its reading met (the checker reports each
    // as a problem) and whether a whole folder was read.
    void skinOpened(const QVector<SkinReadError> &readingErrors, bool wholeSkin);
    // Starts a check at once, without waiting for the user to pause; its
    // first slice runs before this returns, and a small skin is done in it.
    void checkNow();
    // Notes of work done on the skin (a port's report) shown beside the
    // checker's problems until another skin is opened: they speak of files
    // the checker does not read, and no check replaces them.
    void showNotes(const QVector<Problem> &notes);
    // Waiting for the user to pause, or checking.
    bool checkPending() const { return mPause.isActive() || checkRunning(); }
    bool checkRunning() const { return mCheck != nullptr; }
    // At most this many elements are checked in one slice (and at most some
    // 25 ms are spent); tests take few, to see a check in progress.
    void setElementsPerSlice(int elements) { mElementsPerSlice = elements; }

    ProblemsPanel *panel() const { return mPanel; }
    QDockWidget *dock() const { return mDock; }

private:
    void checkSlice();
    void dropCheck();
    void elementGoing(const QByteArray &parentKey, int index);
    void documentChanged();
    void forgetSkin();
    void jumpTo(const QByteArray &nodeKey, const QString &file, qint64 line);
    void showCounts(int errors, int warnings);
    void showProblems();

    SkinDocument &mDocument;
    QDockWidget *mDock;
    ProblemsPanel *mPanel;
    QLabel *mCounts;
    QLabel *mPlace;
    QTimer mPause;
    // The check in progress, and the next turn of the event loop it goes on in.
    std::unique_ptr<SkinChecker> mCheck;
    QTimer mNextSlice;
    qint64 mCheckTimeMs = 0;
    int mElementsPerSlice = INT_MAX;
    QVector<SkinReadError> mReadingErrors;
    QVector<Problem> mChecked;
    QVector<Problem> mNotes;
    bool mWholeSkin = false;
    bool mSkinOpen = false;
};
