// SPDX-License-Identifier: MIT
#pragma once

#include "KorviProject.h"

#include <QString>

// The program's name, version and maker, as the about box and --version show them.
namespace ApplicationInfo {

inline QString title() { return QStringLiteral("Korvi8 Skin Editor"); }

// The name the program is started by.
inline QString programName() { return QStringLiteral("korvi-editor"); }

// The main window's title (followed by " <file>" once a skin is open), also the
// title of its own questions.
inline QString windowTitle() { return QStringLiteral("Korvi8 Template Editor"); }

// "major.minor.revision" of the build.
inline QString version()
{
    return QStringLiteral("%1.%2.%3").arg(KORVI_VERSION_MAJOR).arg(KORVI_VERSION_MINOR).arg(KORVI_VERSION_PATCH);
}

inline QString credit() { return QStringLiteral("Made by the Korvi8 Skin Editor developers, for skin makers"); }

inline QString homePage() { return QStringLiteral(KORVI_HOME_PAGE); }

inline QString issuesPage() { return QStringLiteral(KORVI_HOME_PAGE "/issues"); }

} // namespace ApplicationInfo
