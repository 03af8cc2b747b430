// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// Each subcommand of korvi takes the arguments after its name and returns the
// process exit code: 0 success, 1 failure of the work, 2 a usage error.
int runDump(const QStringList &args);
int runFormat(const QStringList &args);
int runLocate(const QStringList &args);
int runRl2Png(const QStringList &args);
int runPng2Rl(const QStringList &args);
int runImageInfo(const QStringList &args);
int runRender(const QStringList &args);
int runSet(const QStringList &args);
int runUnset(const QStringList &args);
int runRemove(const QStringList &args);
int runLint(const QStringList &args);
int runPort(const QStringList &args);
