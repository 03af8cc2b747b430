// SPDX-License-Identifier: MIT
#include "FileFaults.h"

#include <QFileInfo>

namespace FileFaults {

namespace {

bool named(const char *variable, const QString &path)
{
    const QString list = qEnvironmentVariable(variable);
    if (list.isEmpty())
        return false;
    const QString name = path == QLatin1String("-") ? path : QFileInfo(path).fileName();
    const QStringList names = list.split(QLatin1Char('|'));
    return names.contains(name);
}

} // namespace

QString writeFault(const QString &path)
{
    return named("KORVI_FAIL_WRITES", path) ? diskFull() : QString();
}

QString readFault(const QString &path)
{
    return named("KORVI_FAIL_READS", path) ? inputOutputError() : QString();
}

bool memoryFault(const QString &path)
{
    return named("KORVI_FAIL_MEMORY", path);
}

} // namespace FileFaults
