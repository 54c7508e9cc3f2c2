// Packs glyph cells into square pages.
#pragma once

#include <cstddef>
#include <vector>

struct CellSize {
    int width;
    int height;
};

struct CellPlace {
    int page = 0;
    int x = 0;
    int y = 0;
};

struct Atlas {
    int side = 0;  // of each page; a power of two
    int pages = 0;
    std::vector<CellPlace> places;  // one per cell, in the cells' order
};

// Packs the cells into the smallest page that holds them all, or into several pages of `maxSide` (a
// power of two) when one is not enough. Each cell is surrounded by one blank pixel, because linear
// filtering reads half a pixel beyond its edges. Empty cells are placed at the origin. Returns no
// pages when a cell is larger than a page.
Atlas packAtlas(const std::vector<CellSize>& cells, int maxSide);
