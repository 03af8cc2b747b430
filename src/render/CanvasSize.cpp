// SPDX-License-Identifier: MIT
#include "CanvasSize.h"

#include "PictureCache.h"
#include "ResourceLookup.h"
#include "RlDecoder.h"
#include "SkinContext.h"
#include "SkinFormatName.h"
#include "SkinNumber.h"
#include "StringInfoSink.h"

namespace CanvasSize {

// The width is the leading number, the height the number from the fifth
// character on: this takes a three-digit width for granted, as skins always have.
QSize ofFormat(const QString &format)
{
    const QByteArray text = format.toLatin1();
    const qint64 w = SkinNumber::leadingInteger(text);
    const qint64 h = text.size() > 4 ? SkinNumber::leadingInteger(text.mid(4)) : 0;
    if (w < 1 || h < 1 || w > RlDecoder::kMaxPixels || h > RlDecoder::kMaxPixels
        || w * h > RlDecoder::kMaxPixels)
        return {};
    return QSize(int(w), int(h));
}

QSize forSkin(const SkinContext &context, PictureCache &cache)
{
    // The background is looked for again when drawing, and reported there.
    StringInfoSink quiet;
    const QString background = ResourceLookup(context, quiet).LocateBackground();
    if (!background.isEmpty()) {
        QImage buffer;
        const QSize size = cache.LoadImageFile(background, buffer);
        if (size.width() > 0 && size.height() > 0)
            return size;
    }
    // The drawn background keeps its fixed-position rule; the canvas of a
    // four-digit format still gets the size the format names.
    QSize fromFormat = ofFormat(context.SkinFormat);
    if (!fromFormat.isValid())
        fromFormat = SkinFormatName::sizeOf(context.SkinFormat);
    return fromFormat.isValid() ? fromFormat : QSize(800, 480);
}

} // namespace CanvasSize
