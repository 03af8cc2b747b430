// SPDX-License-Identifier: MIT
#include "RenderSetup.h"

RenderSetup::RenderSetup(const clsKorviInterface &document, const SkinContext &context, InfoSink &info)
    : lookup(context, info)
    , fonts(&info)
    , renderer(document, lookup, cache, fonts)
{
}
