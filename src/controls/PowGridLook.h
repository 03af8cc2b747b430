// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QList>
#include <QPixmap>
#include <QtGlobal>

// The grid's design-time look, each property at its default: the one table a
// new grid starts from and a read look falls back to. Colours are OLE colours
// (system colour indexes from 0x80000000); lengths are twips. The fonts are the
// host's, set when the grid starts.
struct PowGridLook
{
    quint32 HeadlineColor = 0x8000000Fu;
    quint32 ShadowColor = 0x80000010u;
    quint32 TextColor = 0x80000012u;
    int SelRow = 0;
    QFont Font;
    QFont HeaderFont;
    int HeaderHeight = 0;
    int CellHeight = 0;
    bool AllowEdit = true;
    quint32 ColorUneditable = 0xFFFFFFu;
    quint32 ColorEditable = 0xFFFFFFu;
    quint32 ColorSelectedRow = 0x8000000Du;
    bool ShowSelectedRow = false;
    quint32 ColorSelectedText = 0x8000000Eu;
    quint32 ColorLightShadow = 0x80000010u;
    quint32 ColorDarkShadow = 0x80000015u;
    quint32 ColorUnused = 0xC8C8C8u;
    quint32 ColorGrid = 0x80000010u;
    QList<QPixmap> ImageList;
    int HScrollIncrement = 750;
    bool AutoRefresh = true;
    int CellHeightMargin = 120;
    quint32 ColorHeadlineShadow = 0xC8C8C8u;
    bool ShowVerticalBar = true;
    int CellLines = 1;
    int BorderStyle = 1;
    quint32 ColorHeadlineText = 0x80000012u;
    quint32 ColorUneditableAlternate = 0xFFFFFFu;
    bool AlternateColors = false;
    bool UseTouchScreen = false;
    QList<QPixmap> ImageListHeader;
    QFont ButtonFont;
    int ButtonRoundSize = 20;
    quint32 ButtonColor = 0xC8C8C8u;
    quint32 ButtonBorderColor = 0x505050u;
    quint32 ButtonClickColor = 0x00FFFFu;
    quint32 ColorProgressBar = 0xFF0000u;
    quint32 ColorEmptyProgressBar = 0xFFFFFFu;
    QFont TitleFont;
    quint32 ColorTitleBackground = 0xFFFFFFu;
    quint32 ColorTitleText = 0u;
    bool AllowExpandCollapse = true;
};
