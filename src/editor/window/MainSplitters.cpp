// SPDX-License-Identifier: MIT
#include "MainSplitters.h"

#include "Splitter.h"
#include "Twips.h"

#include <algorithm>

namespace {

// The bar's position is in twips from the left or top edge.
Splitter *splitter(const char *name, Splitter::Orientation orientation, QWidget *first, QWidget *second,
                   int position)
{
    auto *bar = new Splitter;
    bar->setObjectName(QString::fromLatin1(name));
    bar->setSplitterOrientation(orientation);
    bar->setControls(first, second);
    bar->setSplitterPosition(position);
    return bar;
}

} // namespace

MainSplitters MainSplitters::create(QWidget *tree, QWidget *properties, QWidget *canvas, QWidget *information)
{
    MainSplitters splitters;
    splitters.property = splitter("splProperty", Splitter::OneAboveTheOther, tree, properties, 6600);
    splitters.info = splitter("splInfo", Splitter::OneAboveTheOther, canvas, information, 7800);
    splitters.main = splitter("splMain", Splitter::SideBySide, splitters.property, splitters.info, 5700);
    return splitters;
}

QList<int> MainSplitters::positions() const
{
    return { main->SplitterPosition(), info->SplitterPosition(), property->SplitterPosition() };
}

void MainSplitters::setPositions(const QList<int> &positions) const
{
    if (positions.size() != 3)
        return;
    main->setSplitterPosition(positions.at(0));
    info->setSplitterPosition(positions.at(1));
    property->setSplitterPosition(positions.at(2));
}

void MainSplitters::fitTo(QSize room) const
{
    // The tree and grid side: a third of the width, within what names and
    // values need and what leaves the canvas its room.
    const int side = std::clamp(room.width() * 3 / 10, 320, 520);
    // The tree: a third of the side's height; the grid below it the rest.
    const int tree = std::clamp(room.height() / 3, 140, 420);
    // The information box: a few lines under the canvas.
    const int canvas = room.height() - std::clamp(room.height() / 6, 60, 160);
    main->setSplitterPosition(Twips::fromPixelsX(side, main));
    property->setSplitterPosition(Twips::fromPixelsY(tree, property));
    info->setSplitterPosition(Twips::fromPixelsY(canvas, info));
}
