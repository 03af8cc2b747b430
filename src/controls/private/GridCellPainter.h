// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <QRect>

class Header;
class PowGrid;
class PowGridItem;

// Draws the parts of a PowGrid (header cells, title lines, cells by data type)
// in the grid's colours and fonts, on the screen or on a printer page.
class GridCellPainter
{
public:
    // Space left and right of a cell's text.
    static constexpr int PaddingTwips = 60;

    struct CellState
    {
        bool selected = false;
        bool editable = false;
        bool alternate = false;
        bool pressed = false;
    };

    GridCellPainter(const PowGrid &grid, QPainter &painter, const QPaintDevice *device);

    void paintBackground(const QRect &whole, const QRect &inner, const QRect &client);
    void paintHeader(const QRect &cell, const Header &header);
    void paintTitle(const QRect &line, const PowGridItem &item, bool open, const QRect &box);
    void paintCell(const QRect &cell, const PowGridItem &item, int column, const CellState &state);

private:
    QColor color(quint32 value) const;
    QColor background(const CellState &state) const;
    void paintGridLines(const QRect &cell);
    void paintText(const QRect &cell, const QString &text, int alignment, const QColor &pen);
    void paintCheck(const QRect &cell, bool checked, int style, const QColor &pen);
    void paintButton(const QRect &cell, const QString &text, bool pressed);
    void paintProgress(const QRect &cell, const QString &value, const QString &label);
    void paintIcon(QRect &cell, const QList<QPixmap> &images, int icon);

    const PowGrid &mGrid;
    QPainter &mPainter;
    const QPaintDevice *mDevice;
    int mPadding;
};
