// SPDX-License-Identifier: MIT
#include "MainSplitters.h"

#include "Splitter.h"

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
