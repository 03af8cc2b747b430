// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSize>

class Splitter;
class QWidget;

// The window's three splitters: tree over grid on the left ("splProperty"),
// canvas over information box on the right ("splInfo"), the two side by side
// ("splMain"), each bar where a first start puts it.
struct MainSplitters
{
    Splitter *main = nullptr;
    Splitter *info = nullptr;
    Splitter *property = nullptr;

    static MainSplitters create(QWidget *tree, QWidget *properties, QWidget *canvas, QWidget *information);

    // The bars' places in twips (main, info, property), as the user left them.
    QList<int> positions() const;
    // Places kept by an earlier run; a list of another length is not used.
    void setPositions(const QList<int> &positions) const;
    // On a first start, for the room the bars will have (the window's inner
    // area less its menus, bars and docks): the canvas and the property grid
    // get most of it, the tree and the information box what they need.
    void fitTo(QSize room) const;
};
