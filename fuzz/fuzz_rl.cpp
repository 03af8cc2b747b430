// SPDX-License-Identifier: MIT
// Feeds arbitrary bytes to the RL picture decoder and to the sprite-descriptor
// reader. A decoded picture is written again with the RL encoder and must decode
// to the same pixels. Anything else than returning (a crash, a sanitizer report,
// a hang, a round trip that differs) is a bug.
#include "RlDecoder.h"
#include "RlEncoder.h"
#include "RlHeader.h"
#include "SpriteDescriptor.h"

#include <QImage>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const SpriteDescriptor descriptor = SpriteDescriptor::fromBytes(bytes);
    (void)descriptor;

    // Pictures that claim millions of pixels only cost time in allocation and
    // filling, and every decoding path is reached with small ones as well.
    RlHeader header;
    if (RlHeader::read(bytes, header) && qint64(header.width) * header.height > (1 << 20))
        return 0;

    QImage image;
    const QSize decoded = RlDecoder::decode(bytes, image);
    if (!image.isNull() && image.size() != decoded)
        abort();
    // Round trip of small pictures only, to keep the runs fast.
    if (!image.isNull() && qint64(image.width()) * image.height() <= 65536) {
        const RlEncoder::Result again = RlEncoder::encode(image);
        if (again.error.isEmpty()) {
            QImage back;
            RlDecoder::decode(again.bytes, back);
            if (back != image)
                abort();
        }
    }
    return 0;
}
