// SPDX-License-Identifier: MIT
#pragma once

#include "EditorSettings.h"
#include "SkinCodec.h"

#include <QObject>
#include <QSet>

class QAction;
class QActionGroup;
class QLabel;
class QMenu;
class QStatusBar;
class QWidget;
class SkinDocument;

// Which code page the open skin's text is shown and typed in: the system's
// own (SkinCodec::hostDefault), unless the user chose one for the skin's
// folder with View > Code Page, which the editor's settings keep per folder.
// Choosing one changes no byte of any file; the tree, the grid, the canvas and
// the messages show the text again in it.
//
// When a skin's bytes look like another code page (CodePageGuess), the status
// bar offers it once per folder and run: "This skin's text looks like
// Windows-1251 (Cyrillic): use it?". Nothing changes without the user's yes,
// and a folder the user chose a code page for gets no offer.
class CodePageChoice : public QObject
{
    Q_OBJECT

public:
    CodePageChoice(SkinDocument &skin, const EditorSettings &settings, QMenu &view, QStatusBar &statusBar,
                   QObject *parent = nullptr);

    // The folder a skin's code page is kept for: the folder that holds the
    // resolution folder ("skin" of skin/800_480/ui/main.ui), else the .ui
    // file's own folder.
    static QString skinFolderOf(const QString &uiFilePath);

    // The code page to read the skin at `uiFilePath` in.
    SkinCodec codecFor(const QString &uiFilePath) const;
    // After the skin at `uiFilePath` was read into the document: reads its
    // text in its code page, shows that in the menu, and offers a better one
    // when its bytes ask for it.
    void skinOpened(const QString &uiFilePath);
    // The user's choice for the open skin's folder.
    void choose(const SkinCodec &codec);

    QMenu *menu() const { return mMenu; }
    // The offer in the status bar; hidden when there is none.
    QWidget *offer() const { return mOffer; }
    QString offerText() const;
    void acceptOffer();
    void declineOffer();

private:
    void showChecked();
    void makeOffer(const SkinCodec &codec);

    SkinDocument &mSkin;
    EditorSettings mSettings;
    QMenu *mMenu = nullptr;
    QActionGroup *mGroup = nullptr;
    QWidget *mOffer = nullptr;
    QLabel *mOfferLabel = nullptr;
    SkinCodec mOffered;
    QString mFolder;
    QSet<QString> mFoldersOffered;
};
