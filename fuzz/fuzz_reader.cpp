// SPDX-License-Identifier: MIT
// Feeds arbitrary bytes to the skin file reader, then writes what was read and
// reads that again. Reading may stop with a SkinReadError; anything else (a
// crash, a sanitizer report, a hang) is a bug.
#include "SkinReadError.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    // The first byte picks whether the file is read as an imported one.
    const bool imported = size > 0 && (data[0] & 1);
    clsKorviInterface doc;
    try {
        UiFileReader(doc, imported).readBytes(bytes, QStringLiteral("fuzz.ui"));
    } catch (const SkinReadError &) {
    }
    const QByteArray written = UiFileWriter(doc).fileText();
    clsKorviInterface again;
    try {
        UiFileReader(again, false).readBytes(written, QStringLiteral("written.ui"));
    } catch (const SkinReadError &) {
    }
    (void)doc.GetElementValue("x", doc.Layers().Count() ? doc.Layers().Item(1) : nullptr);
    return 0;
}
