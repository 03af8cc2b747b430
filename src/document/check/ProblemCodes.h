// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// The short codes of the checker's problems, one per kind.
namespace ProblemCodes {

inline const QString MissingPicture = QStringLiteral("missing-picture");
inline const QString BadPicture = QStringLiteral("bad-picture");
inline const QString UnknownTemplate = QStringLiteral("unknown-template");
inline const QString UnknownFontType = QStringLiteral("unknown-fonttype");
inline const QString UnknownElementTemplate = QStringLiteral("unknown-element-template");
inline const QString MissingUsedLayer = QStringLiteral("missing-used-layer");
inline const QString TemplateCycle = QStringLiteral("template-cycle");
inline const QString SplitValue = QStringLiteral("split-value");
inline const QString UnquotedText = QStringLiteral("unquoted-text");
inline const QString NonAsciiName = QStringLiteral("non-ascii-name");
inline const QString LostSharedMarker = QStringLiteral("lost-shared-marker");
inline const QString NotANumber = QStringLiteral("not-a-number");
inline const QString BadColour = QStringLiteral("bad-colour");
inline const QString UnclosedScript = QStringLiteral("unclosed-script");
inline const QString OrphanClosingTag = QStringLiteral("orphan-closing-tag");
inline const QString DuplicateName = QStringLiteral("duplicate-name");
inline const QString OffScreen = QStringLiteral("off-screen");
inline const QString ZeroSpriteCount = QStringLiteral("zero-sprite-count");
inline const QString UnusedPicture = QStringLiteral("unused-picture");
inline const QString ReadingError = QStringLiteral("reading-error");

inline QStringList all()
{
    return { MissingPicture, BadPicture, UnknownTemplate, UnknownFontType, UnknownElementTemplate, MissingUsedLayer,
             TemplateCycle, SplitValue, UnquotedText, NonAsciiName, LostSharedMarker, NotANumber, BadColour, UnclosedScript,
             OrphanClosingTag, DuplicateName, OffScreen, ZeroSpriteCount, UnusedPicture, ReadingError };
}

} // namespace ProblemCodes
