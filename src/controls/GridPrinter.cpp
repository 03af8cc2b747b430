// SPDX-License-Identifier: MIT
#include "GridPrinter.h"

#include "GridCellPainter.h"
#include "PowGrid.h"
#include "Twips.h"

namespace {

struct PrintLayout
{
    QList<int> columns; // the visible columns, 0-based
    QList<int> widths;  // their widths on the page
    int headerHeight = 0;
    int rowHeight = 0;
    QRect page;
};

int totalTwips(const PowGrid &grid)
{
    int total = 0;
    for (const Header *h : *grid.Headers())
        total += h->Visible ? h->ColumnWidth : 0;
    return total;
}

PrintLayout layoutFor(const PowGrid &grid, QPrinter &printer)
{
    PrintLayout layout;
    const QRectF paint = printer.pageLayout().paintRectPixels(printer.resolution());
    layout.page = QRect(0, 0, int(paint.width()), int(paint.height()));
    const int total = Twips::toPixelsX(totalTwips(grid), &printer);
    const double scale = total > layout.page.width() ? double(layout.page.width()) / total : 1.0;
    for (int c = 0; c < grid.Headers()->Count(); ++c) {
        const Header *h = grid.Headers()->at(c);
        if (!h->Visible)
            continue;
        layout.columns << c;
        layout.widths << int(Twips::toPixelsX(h->ColumnWidth, &printer) * scale);
    }
    const int margin = Twips::toPixelsY(grid.CellHeightMargin(), &printer);
    layout.rowHeight = QFontMetrics(grid.Font(), &printer).height() + margin;
    layout.headerHeight = QFontMetrics(grid.HeaderFont(), &printer).height() + margin;
    return layout;
}

void printHeader(const PowGrid &grid, GridCellPainter &cells, const PrintLayout &layout)
{
    int x = 0;
    for (int i = 0; i < layout.columns.size(); ++i) {
        cells.paintHeader(QRect(x, 0, layout.widths[i], layout.headerHeight),
                          *grid.Headers()->at(layout.columns[i]));
        x += layout.widths[i];
    }
}

void printRow(const PowGrid &grid, GridCellPainter &cells, const PrintLayout &layout,
              const PowGridItem &item, int y)
{
    if (item.TitleLine) {
        int width = 0;
        for (int w : layout.widths)
            width += w;
        cells.paintTitle(QRect(0, y, width, layout.rowHeight), item, true, QRect());
        return;
    }
    int x = 0;
    for (int i = 0; i < layout.columns.size(); ++i) {
        GridCellPainter::CellState state;
        const int c = layout.columns[i];
        state.editable = grid.AllowEdit() && grid.Headers()->at(c)->ColumnEditable;
        cells.paintCell(QRect(x, y, layout.widths[i], layout.rowHeight), item, c, state);
        x += layout.widths[i];
    }
}

} // namespace

bool GridPrinter::print(const PowGrid &grid, QPrinter &printer)
{
    const PrintLayout layout = layoutFor(grid, printer);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    GridCellPainter cells(grid, painter, &printer);
    printHeader(grid, cells, layout);
    int y = layout.headerHeight;
    for (const PowGridItem *item : *grid.Items()) {
        if (!item->Visible)
            continue;
        if (y + layout.rowHeight > layout.page.height() && y > layout.headerHeight) {
            printer.newPage();
            printHeader(grid, cells, layout);
            y = layout.headerHeight;
        }
        printRow(grid, cells, layout, *item, y);
        y += layout.rowHeight;
    }
    return painter.end();
}

void GridPrinter::fitToPage(PowGrid &grid, QPrinter &printer)
{
    const QRectF paint = printer.pageLayout().paintRectPixels(printer.resolution());
    const int pageTwips = Twips::fromPixelsX(paint.width(), &printer);
    const int total = totalTwips(grid);
    if (total <= pageTwips || total == 0)
        return;
    for (Header *h : *grid.Headers())
        h->ColumnWidth = int(double(h->ColumnWidth) * pageTwips / total);
    grid.RedrawGrid();
}
