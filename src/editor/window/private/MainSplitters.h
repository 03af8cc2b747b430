// SPDX-License-Identifier: MIT
#pragma once

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
};
