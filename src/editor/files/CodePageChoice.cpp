// SPDX-License-Identifier: MIT
#include "CodePageChoice.h"

#include "CodePageGuess.h"
#include "SkinDocument.h"
#include "clsKorviInterface.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QStatusBar>

namespace {

bool isResolutionFolder(const QString &name)
{
    static const QRegularExpression resolution(QStringLiteral("^\\d{3,4}_\\d{3,4}$"));
    return resolution.match(name).hasMatch();
}

} // namespace

CodePageChoice::CodePageChoice(SkinDocument &skin, const EditorSettings &settings, QMenu &view,
                               QStatusBar &statusBar, QObject *parent)
    : QObject(parent)
    , mSkin(skin)
    , mSettings(settings)
{
    setObjectName(QStringLiteral("CodePageChoice"));
    mMenu = view.addMenu(QStringLiteral("Code &Page"));
    mMenu->setObjectName(QStringLiteral("mnuCodePage"));
    mMenu->setStatusTip(QStringLiteral("The code page the skin's text is in; no file is changed by choosing one"));
    mGroup = new QActionGroup(this);
    for (const QString &name : SkinCodec::availableNames()) {
        const SkinCodec codec = *SkinCodec::named(name);
        QAction *action = mMenu->addAction(codec.description());
        action->setObjectName(QStringLiteral("mnuCodePage_") + name);
        action->setData(name);
        action->setCheckable(true);
        mGroup->addAction(action);
        connect(action, &QAction::triggered, this, [this, codec] { choose(codec); });
    }

    mOffer = new QWidget;
    mOffer->setObjectName(QStringLiteral("codePageOffer"));
    auto *layout = new QHBoxLayout(mOffer);
    layout->setContentsMargins(0, 0, 0, 0);
    mOfferLabel = new QLabel;
    auto *use = new QPushButton(QStringLiteral("Use It"));
    use->setObjectName(QStringLiteral("codePageOfferUse"));
    auto *no = new QPushButton(QStringLiteral("No"));
    no->setObjectName(QStringLiteral("codePageOfferNo"));
    layout->addWidget(mOfferLabel);
    layout->addWidget(use);
    layout->addWidget(no);
    connect(use, &QPushButton::clicked, this, &CodePageChoice::acceptOffer);
    connect(no, &QPushButton::clicked, this, &CodePageChoice::declineOffer);
    statusBar.addWidget(mOffer);
    mOffer->hide();
    showChecked();
}

QString CodePageChoice::skinFolderOf(const QString &uiFilePath)
{
    // By the path's names alone, so a folder that is gone is named the same.
    const QString folder = QFileInfo(QDir::cleanPath(QFileInfo(uiFilePath).absoluteFilePath())).path();
    // skin/800_480/ui/main.ui and skin/800_480/main_scheme.ui alike.
    QString dir = folder;
    for (int up = 0; up < 3; ++up) {
        const QString parent = QFileInfo(dir).path();
        if (parent == dir)
            break;
        if (isResolutionFolder(QFileInfo(dir).fileName()))
            return parent;
        dir = parent;
    }
    return folder;
}

SkinCodec CodePageChoice::codecFor(const QString &uiFilePath) const
{
    const QString chosen = mSettings.codePageFor(skinFolderOf(uiFilePath));
    if (const std::optional<SkinCodec> codec = SkinCodec::named(chosen))
        return *codec;
    return SkinCodec::hostDefault();
}

void CodePageChoice::skinOpened(const QString &uiFilePath)
{
    mOffer->hide();
    mFolder = uiFilePath.isEmpty() ? QString() : skinFolderOf(uiFilePath);
    mSkin.setCodec(codecFor(uiFilePath));
    showChecked();
    if (mFolder.isEmpty() || !mSettings.codePageFor(mFolder).isEmpty() || mFoldersOffered.contains(mFolder))
        return;
    QList<QByteArrayView> files;
    const SkinSources &sources = mSkin.document().Sources();
    for (int n = 1; n <= sources.count(); ++n) {
        if (const SkinSourceFile *file = sources.file(n))
            files << QByteArrayView(file->bytes());
    }
    if (const std::optional<SkinCodec> better = CodePageGuess::better(files, mSkin.document().codec()))
        makeOffer(*better);
}

void CodePageChoice::choose(const SkinCodec &codec)
{
    mOffer->hide();
    if (!mFolder.isEmpty())
        mSettings.setCodePageFor(mFolder, codec.name());
    mSkin.setCodec(codec);
    showChecked();
}

QString CodePageChoice::offerText() const
{
    return mOffer->isHidden() ? QString() : mOfferLabel->text();
}

void CodePageChoice::acceptOffer()
{
    if (!mOffer->isHidden())
        choose(mOffered);
}

void CodePageChoice::declineOffer()
{
    mOffer->hide();
}

void CodePageChoice::showChecked()
{
    const QString name = mSkin.document().codec().name();
    for (QAction *action : mGroup->actions())
        action->setChecked(action->data().toString() == name);
}

void CodePageChoice::makeOffer(const SkinCodec &codec)
{
    mFoldersOffered.insert(mFolder);
    mOffered = codec;
    mOfferLabel->setText(QStringLiteral("This skin's text looks like %1: use it?").arg(codec.description()));
    mOffer->show();
}
