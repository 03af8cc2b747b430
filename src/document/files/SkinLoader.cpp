// SPDX-License-Identifier: MIT
#include "SkinLoader.h"

#include "SkinFormatName.h"
#include "SkinOpenPlan.h"
#include "SkinReadError.h"

namespace SkinLoader {

QString skinFormatFromFileName(const QString &path)
{
    return SkinFormatName::fromFileName(path);
}

OpenedSkin openSkinFile(clsKorviInterface &document, const QString &path, const ReadErrorHandler &onError)
{
    const SkinOpenPlan plan = SkinOpenPlan::forFile(path);
    SkinOpenPlan::Progress progress;
    progress.readError = onError ? onError : [](const SkinReadError &error) { throw error; };
    plan.readInto(document, progress);
    return { plan.skinFormat, plan.paths() };
}

} // namespace SkinLoader
