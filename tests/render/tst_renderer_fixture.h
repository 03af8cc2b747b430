// SPDX-License-Identifier: MIT
#pragma once

// A throw-away skin for renderer tests: pictures in the folder above the ui
// folder, a document read from .ui text, and a renderer over them.

#include "ElementTextPainter.h"
#include "TestFiles.h"
#include "RenderSetup.h"
#include "SkinContext.h"
#include "StringInfoSink.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QFile>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <memory>

namespace TestColours {
constexpr QRgb kCanvas = 0xFF404040u;
constexpr QRgb kRed = 0xFFFF0000u;
constexpr QRgb kGreen = 0xFF00FF00u;
constexpr QRgb kBlue = 0xFF0000FFu;
constexpr QRgb kWhite = 0xFFFFFFFFu;
constexpr QRgb kBlack = 0xFF000000u;
constexpr QRgb kCyan = 0xFF00FFFFu;
constexpr QRgb kMagenta = 0xFFFF00FFu;
constexpr QRgb kYellow = 0xFFFFFF00u;
} // namespace TestColours

inline QImage solidPicture(int width, int height, QRgb colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

// A picture of `frames` frames stacked from the top, each in its own colour.
inline QImage stackedFrames(int width, int frameHeight, const QVector<QRgb> &colours)
{
    QImage image(width, frameHeight * int(colours.size()), QImage::Format_RGB32);
    for (int f = 0; f < colours.size(); ++f) {
        for (int y = 0; y < frameHeight; ++y) {
            for (int x = 0; x < width; ++x)
                image.setPixel(x, f * frameHeight + y, colours[f]);
        }
    }
    return image;
}

struct RenderFixture
{
    QTemporaryDir dir;
    QString skinRoot;
    SkinContext context;
    StringInfoSink info;
    clsKorviInterface document;
    std::unique_ptr<RenderSetup> setup;
    LayerRenderer *renderer = nullptr;
    QImage canvas;

    RenderFixture()
    {
        skinRoot = dir.path() + QStringLiteral("/skin");
        QDir().mkpath(skinRoot + QStringLiteral("/800_480/ui"));
        context.UiFilePath = skinRoot + QStringLiteral("/800_480/ui/test.ui");
        context.SkinFormat = QStringLiteral("800_480");
        setup = std::make_unique<RenderSetup>(document, context, info);
        renderer = &setup->renderer;
        canvas = solidPicture(200, 150, TestColours::kCanvas);
    }

    // Pictures lie beside the ui folder, where ordinary references look first.
    void picture(const QString &name, const QImage &image)
    {
        image.save(skinRoot + QStringLiteral("/800_480/") + name, "BMP");
    }

    void file(const QString &name, const QByteArray &bytes)
    {
        writeTestFile(skinRoot + QStringLiteral("/800_480/") + name, bytes);
    }

    void read(const QByteArray &uiText)
    {
        UiFileReader(document, false).readBytes(uiText, QStringLiteral("test.ui"));
    }

    const clsElement *block(const char *key) const { return document.Layers().Find(key); }

    const clsElement *object(const char *blockKey, const char *key) const
    {
        return document.Layers().Find(blockKey)->SubElements().Find(key);
    }

    DrawnBox draw(const char *blockKey, const char *key, bool highlighted = false)
    {
        return renderer->DrawElement(object(blockKey, key), canvas, 0, 0, highlighted);
    }

    QFont fontFor(const char *family, bool bold, int size)
    {
        return ElementTextPainter::fontFor(setup->fonts.resolveFamily(QLatin1String(family)), bold, size);
    }
};

// The same text printed straight onto a canvas of the same size and colour,
// with its top-left corner at (x, y).
inline QImage referenceText(const QSize &size, const QFont &font, QRgb colour,
                            const QVector<QPair<QPoint, QString>> &lines)
{
    QImage image = solidPicture(size.width(), size.height(), TestColours::kCanvas);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(QColor(colour));
    const int ascent = QFontMetrics(font).ascent();
    for (const auto &line : lines)
        painter.drawText(QPoint(line.first.x(), line.first.y() + ascent), line.second);
    return image;
}
