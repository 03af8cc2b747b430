#pragma once

#include <QString>

// The program's name, version and maker, as the about box shows them.
namespace ApplicationInfo {

inline QString title() { return QStringLiteral("Korvi8 Skin Editor"); }

// The main window's title (followed by " <file>" once a skin is open), also the
// title of its own questions.
inline QString windowTitle() { return QStringLiteral("Korvi8 Template Editor"); }

// "major.minor.revision" of the build.
inline QString version()
{
    return QStringLiteral("%1.%2.%3").arg(KORVI_VERSION_MAJOR).arg(KORVI_VERSION_MINOR).arg(KORVI_VERSION_PATCH);
}

inline QString credit() { return QStringLiteral("Made by the Korvi8 Skin Editor developers, for skin makers"); }

inline QString homePage() { return QStringLiteral("https://github.com/korvi8/skin-editor"); }

inline QString issuesPage() { return QStringLiteral("https://github.com/korvi8/skin-editor/issues"); }

} // namespace ApplicationInfo
