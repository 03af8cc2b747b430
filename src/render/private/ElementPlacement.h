// SPDX-License-Identifier: MIT
#pragma once

// Where one object is being drawn. X and Y move as the main picture is aligned;
// the text and the icon start from where the picture left them.
struct ElementPlacement
{
    int X = 0;
    int Y = 0;
    int W = 0;
    int H = 0;
    // Size of the last picture drawn (main or indicator), else W and H.
    int WW = 0;
    int HH = 0;
};
