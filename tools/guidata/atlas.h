// Glyph cells on square pages.
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
    int side = 0;  // of every page, a power of two
    int pages = 0;
    std::vector<CellPlace> places;  // one per cell, in the cells' order
};

// Places the cells in the smallest page that takes them all, or, when not even one of `maxSide`
// (a power of two) does, on several of that side. A blank pixel lies around every cell, because
// linear filtering reads half a pixel beyond its edges. Empty cells lie at the origin. A cell
// larger than a page leaves the atlas without pages.
Atlas packAtlas(const std::vector<CellSize>& cells, int maxSide);
