// SPDX-License-Identifier: MIT
#pragma once

#include "DrawnBox.h"
#include "SkinContext.h"
#include "StringInfoSink.h"
#include "clsKorviInterface.h"

#include <QImage>
#include <QWidget>
#include <memory>

class QLabel;
class QScrollArea;
struct RenderSetup;

// View > Compare Formats: the layer the window shows, drawn from the same
// skin file in another format beside it, read-only. It follows the window by
// node key: the same layer, the same object selected, the same scrolling.
class CompareFormats : public QWidget
{
    Q_OBJECT

public:
    CompareFormats(const SkinContext &shown, const QString &otherFormat, QWidget *parent = nullptr);
    ~CompareFormats() override;

    // Reads the other format's file (the shown file's path with the format
    // renamed); false with `error` set when it cannot.
    bool open(QString &error);
    QString file() const { return mContext.UiFilePath; }
    QString format() const { return mContext.SkinFormat; }

    // Draws the layer of that key with the object of that node key selected.
    void follow(const QByteArray &layerKey, const QByteArray &nodeKey);
    // Scrolls to the same fractions of the picture as the window's canvas.
    void followScroll(double fractionX, double fractionY);

    QImage picture() const { return mPicture; }
    QByteArray layerKey() const { return mLayerKey; }
    // The selected object's drawn box; the unset box when none is drawn.
    DrawnBox selectedBox() const { return mSelectedBox; }

private:
    clsKorviInterface mDocument;
    SkinContext mContext;
    StringInfoSink mInfo;
    std::unique_ptr<RenderSetup> mSetup;
    QScrollArea *mArea = nullptr;
    QLabel *mCanvas = nullptr;
    QImage mPicture;
    QByteArray mLayerKey;
    DrawnBox mSelectedBox;
};
