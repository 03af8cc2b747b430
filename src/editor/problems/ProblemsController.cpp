// SPDX-License-Identifier: MIT
#include "ProblemsController.h"

#include "ProblemsPanel.h"
#include "SkinChecker.h"
#include "NodeKey.h"
#include "SkinDocument.h"
#include "clsElements.h"

#include <QDockWidget>
#include <QUndoStack>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>

#include <algorithm>

namespace {

// How long the user must pause after a change before the skin is checked.
constexpr int kShortestPauseMs = 300;
// The pause grows with the time a check takes, so that checking never takes
// more than this share of the window's time while the user keeps editing.
constexpr int kPausePerCheckTime = 4;
// The longest the window waits for one slice of a check.
constexpr int kSliceMs = 25;

QString counted(int count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

} // namespace

ProblemsController::ProblemsController(SkinDocument &document, QMainWindow &window, QStatusBar &statusBar,
                                       QObject *parent)
    : QObject(parent)
    , mDocument(document)
    , mDock(new QDockWidget(QStringLiteral("Problems"), &window))
    , mPanel(new ProblemsPanel)
    , mCounts(new QLabel)
    , mPlace(new QLabel)
{
    setObjectName(QStringLiteral("ProblemsController"));
    mDock->setObjectName(QStringLiteral("dockProblems"));
    mPanel->setObjectName(QStringLiteral("problemsPanel"));
    mDock->setWidget(mPanel);
    // Closed, it comes back from View > Problems.
    mDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable
                       | QDockWidget::DockWidgetClosable);
    window.addDockWidget(Qt::BottomDockWidgetArea, mDock);

    mCounts->setObjectName(QStringLiteral("stbProblemCounts"));
    mPlace->setObjectName(QStringLiteral("stbProblemPlace"));
    statusBar.addPermanentWidget(mPlace);
    statusBar.addPermanentWidget(mCounts);

    // The check runs on the window's thread, on the document itself: it needs
    // no copy of a large skin and sees exactly what the window shows. It runs
    // in slices of at most some 25 ms, one per turn of the event loop, so the
    // window answers while a large skin is checked; a thread would need a
    // copy of the document, which every edit changes. A check holds pointers
    // into the document: the first sign of a change drops it, before any
    // further slice could see the document half changed. Every change
    // restarts the pause, and the pause lasts at least four times as long as
    // the last check took, so a skin that takes a second to check is checked
    // once the user has stopped for four seconds, and the demo skin (a few
    // milliseconds) at once.
    mPause.setSingleShot(true);
    mPause.setInterval(kShortestPauseMs);
    connect(&mPause, &QTimer::timeout, this, &ProblemsController::checkNow);
    mNextSlice.setSingleShot(true);
    mNextSlice.setInterval(0);
    connect(&mNextSlice, &QTimer::timeout, this, &ProblemsController::checkSlice);
    connect(&mDocument, &SkinDocument::changed, this, &ProblemsController::documentChanged);
    // A save gives new elements (a pasted object) their file and line: the
    // next check places their problems there.
    connect(&mDocument.undoStack(), &QUndoStack::cleanChanged, this, [this](bool clean) {
        if (clean)
            documentChanged();
    });
    connect(&mDocument, &SkinDocument::contextChanged, this, &ProblemsController::documentChanged);
    connect(&mDocument, &SkinDocument::aboutToBeReset, this, &ProblemsController::forgetSkin);
    for (const auto change : { &SkinDocument::propertyChanged, &SkinDocument::propertyAdded,
                               &SkinDocument::propertyAboutToBeRemoved, &SkinDocument::elementInserted })
        connect(&mDocument, change, this, &ProblemsController::dropCheck);
    connect(&mDocument, &SkinDocument::elementAboutToBeRemoved, this, &ProblemsController::elementGoing);
    connect(mPanel, &ProblemsPanel::problemActivated, this, &ProblemsController::jumpTo);
    connect(mPanel, &ProblemsPanel::countsChanged, this, &ProblemsController::showCounts);
}

ProblemsController::~ProblemsController() = default;

void ProblemsController::skinOpened(const QVector<SkinReadError> &readingErrors, bool wholeSkin)
{
    mReadingErrors = readingErrors;
    mWholeSkin = wholeSkin;
    mSkinOpen = true;
    checkNow();
}

void ProblemsController::forgetSkin()
{
    mSkinOpen = false;
    mPause.stop();
    dropCheck();
    mReadingErrors.clear();
    mChecked.clear();
    mNotes.clear();
    mPlace->clear();
    mPanel->setProblems({});
    mCounts->clear();
}

void ProblemsController::documentChanged()
{
    dropCheck();
    if (mSkinOpen)
        mPause.start();
}

// The problems of a removed element (and of everything in it) go at once:
// the panel never points at what is no longer there while the next check
// waits for the user's pause.
void ProblemsController::elementGoing(const QByteArray &parentKey, int index)
{
    dropCheck();
    const clsElements *children = mDocument.childrenOf(parentKey);
    if (!children || index < 0 || index >= children->Count())
        return;
    const clsElement &element = *children->at(index);
    const QByteArray key = parentKey.isEmpty() ? NodeKey::block(element).bytes() : NodeKey(parentKey).child(element).bytes();
    const auto within = [&key](const Problem &problem) {
        return problem.nodeKey == key || problem.nodeKey.startsWith(key + '|');
    };
    const auto before = mChecked.size();
    mChecked.erase(std::remove_if(mChecked.begin(), mChecked.end(), within), mChecked.end());
    if (mChecked.size() != before)
        showProblems();
}

void ProblemsController::dropCheck()
{
    mNextSlice.stop();
    mCheck.reset();
}

void ProblemsController::checkNow()
{
    mPause.stop();
    dropCheck();
    if (!mSkinOpen)
        return;
    mCheck = std::make_unique<SkinChecker>(mDocument.document(), mDocument.context(), mReadingErrors, mWholeSkin);
    mCheckTimeMs = 0;
    checkSlice();
}

void ProblemsController::checkSlice()
{
    QElapsedTimer took;
    took.start();
    const bool done = mCheck->runFor(kSliceMs, mElementsPerSlice);
    mCheckTimeMs += took.elapsed();
    if (!done) {
        mNextSlice.start();
        return;
    }
    mChecked = mCheck->takeProblems();
    mCheck.reset();
    showProblems();
    mPause.setInterval(std::max<qint64>(kShortestPauseMs, mCheckTimeMs * kPausePerCheckTime));
}

void ProblemsController::showNotes(const QVector<Problem> &notes)
{
    mNotes = notes;
    showProblems();
}

void ProblemsController::showProblems()
{
    mPanel->setProblems(mChecked + mNotes);
}

void ProblemsController::jumpTo(const QByteArray &nodeKey, const QString &file, qint64 line)
{
    if (!nodeKey.isEmpty())
        mDocument.setCurrent(nodeKey);
    const QString name = QFileInfo(file).fileName();
    mPlace->setText(line > 0 ? QStringLiteral("%1:%2").arg(name).arg(line) : name);
    mPlace->setToolTip(file);
}

void ProblemsController::showCounts(int errors, int warnings)
{
    mCounts->setText(counted(errors, "error", "errors") + QStringLiteral(", ")
                     + counted(warnings, "warning", "warnings"));
}
