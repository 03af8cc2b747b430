// SPDX-License-Identifier: MIT
#include "CompareFormats.h"

#include "CanvasSize.h"
#include "NodeKey.h"
#include "PortNumbers.h"
#include "RenderSetup.h"
#include "SkinLoader.h"
#include "SkinReadError.h"

#include <QFileInfo>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

CompareFormats::CompareFormats(const SkinContext &shown, const QString &otherFormat, QWidget *parent)
    : QWidget(parent, Qt::Tool)
{
    int count = 0;
    mContext.UiFilePath = QString::fromUtf8(PortNumbers::replaceFormat(shown.UiFilePath.toUtf8(), shown.SkinFormat.toUtf8(),
                                                                       otherFormat.toUtf8(), count));
    mContext.SkinDirectory = shown.SkinDirectory;
    mContext.SkinFormat = otherFormat;
    setObjectName(QStringLiteral("CompareFormats"));
    setWindowTitle(QStringLiteral("Compare Formats: %1").arg(otherFormat));
    mCanvas = new QLabel;
    mArea = new QScrollArea(this);
    mArea->setWidget(mCanvas);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mArea);
    resize(700, 480);
}

CompareFormats::~CompareFormats() = default;

bool CompareFormats::open(QString &error)
{
    if (!QFileInfo(mContext.UiFilePath).isFile()) {
        error = QStringLiteral("There is no %1 to compare with.").arg(mContext.UiFilePath);
        return false;
    }
    try {
        SkinLoader::openSkinFile(mDocument, mContext.UiFilePath);
    } catch (const SkinReadError &e) {
        error = QString::fromStdString(e.what());
        return false;
    }
    mSetup = std::make_unique<RenderSetup>(mDocument, mContext, mInfo);
    mSetup->fonts.loadSkinFonts(mContext);
    return true;
}

void CompareFormats::follow(const QByteArray &layerKey, const QByteArray &nodeKey)
{
    if (!mSetup)
        return;
    mLayerKey = layerKey;
    const clsElement *layer = mDocument.Layers().Find(layerKey);
    const clsElement *selected = nodeKey.isEmpty() ? nullptr : NodeKey::ResolveNodeKey(mDocument, nodeKey).element;
    mPicture = QImage(CanvasSize::forSkin(mContext, mSetup->cache), QImage::Format_RGB32);
    mPicture.fill(Qt::black);
    mSetup->renderer.setHighlighted(selected);
    if (layer)
        mSetup->renderer.DrawLayer(layer, mPicture);
    mSelectedBox = selected ? mSetup->renderer.boxOf(selected) : DrawnBox();
    mCanvas->setPixmap(QPixmap::fromImage(mPicture));
    mCanvas->resize(mPicture.size());
}

void CompareFormats::followScroll(double fractionX, double fractionY)
{
    QScrollBar *h = mArea->horizontalScrollBar();
    QScrollBar *v = mArea->verticalScrollBar();
    h->setValue(int(fractionX * h->maximum() + 0.5));
    v->setValue(int(fractionY * v->maximum() + 0.5));
}
