// SPDX-License-Identifier: MIT
#pragma once

#include "SkinContext.h"

#include <QHash>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>

class InfoSink;
class QFont;

// The fonts a skin is drawn with. A skin may bring its own font files in a folder
// named "fonts" beside it; those are added to the application's fonts before
// drawing. A family that is still missing is drawn with a metric-similar one, and
// the information sink is told once per family in each drawing (see newDrawing).
//
// Needs a QGuiApplication (fonts are the platform's).
class SkinFonts
{
public:
    explicit SkinFonts(InfoSink *sink);

    // Adds every .ttf, .otf and .ttc file of the "fonts" folders at the ui folder's
    // parent, its grandparent, the skin directory and the skin directory's parent.
    // Returns the families that the files added; a file is added only once.
    QStringList loadSkinFonts(const SkinContext &context);

    // Every family added so far by loadSkinFonts.
    QStringList loadedFamilies() const { return mLoadedFamilies; }

    // The family to draw a skin font name with: the name itself when the platform
    // has it (ASCII case ignored), else its fallback.
    QString resolveFamily(const QString &name);

    // Tells the information sink, once per family and script, when `font`
    // has no glyphs for letters of `text` (Cyrillic in a Latin-only font):
    // the platform draws them with a fallback font of its own.
    void reportMissingLetters(const QFont &font, const QString &text);

    // A new drawing begins: each missing family and script is told again,
    // once, when the drawing meets it.
    void newDrawing();

    // The metric-similar family used for a missing one.
    static QString fallbackFamily(const QString &name);

    // The folders searched for font files, in order, without repeats.
    static QStringList fontFolders(const SkinContext &context);

private:
    bool platformHasFamily(const QString &name);

    InfoSink *mSink;
    QStringList mLoadedFamilies;
    QSet<QString> mAddedFiles;
    QSet<QString> mKnownFamilies; // lower case; empty until first needed
    QHash<QString, QString> mResolved; // lower-case name -> family
    QSet<QString> mReported; // lower-case names told to the sink in this drawing
    QSet<QPair<QString, int>> mScriptsChecked; // family and script looked at in this drawing
};
