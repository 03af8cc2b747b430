// SPDX-License-Identifier: MIT
#pragma once

#include <QPrinter>

class PowGrid;

// Prints a PowGrid: its header and its visible rows, title lines included, page
// after page with the header at the top of each page. Columns wider than the
// page together are narrowed to fit it.
class GridPrinter
{
public:
    // Returns false when the printer could not be started.
    static bool print(const PowGrid &grid, QPrinter &printer);
    // Narrows the columns so that together they fit the printer's page width.
    static void fitToPage(PowGrid &grid, QPrinter &printer);
};
