#include "tools/guidata/atlas.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int GAP = 1;
constexpr int SMALLEST_SIDE = 32;

bool isEmpty(const CellSize& cell) {
    return cell.width == 0 || cell.height == 0;
}

// Orders the cells by height, so that rows of cells waste little space.
std::vector<std::size_t> packingOrder(const std::vector<CellSize>& cells) {
    std::vector<std::size_t> order(cells.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&cells](std::size_t a, std::size_t b) {
        return cells[a].height > cells[b].height;
    });
    return order;
}

// Fills pages of one side row by row.
Atlas fillPages(const std::vector<CellSize>& cells, int side) {
    Atlas atlas;
    atlas.side = side;
    atlas.pages = 1;
    atlas.places.resize(cells.size());
    CellPlace pen{0, GAP, GAP};
    int rowHeight = 0;
    for (const std::size_t index : packingOrder(cells)) {
        const CellSize& cell = cells[index];
        if (isEmpty(cell))
            continue;
        if (pen.x + cell.width + GAP > side) {
            pen = {pen.page, GAP, pen.y + rowHeight + GAP};
            rowHeight = 0;
        }
        if (pen.y + cell.height + GAP > side) {
            pen = {pen.page + 1, GAP, GAP};
            rowHeight = 0;
        }
        atlas.places[index] = pen;
        atlas.pages = pen.page + 1;
        rowHeight = std::max(rowHeight, cell.height);
        pen.x += cell.width + GAP;
    }
    return atlas;
}

}  // namespace

Atlas packAtlas(const std::vector<CellSize>& cells, int maxSide) {
    int side = SMALLEST_SIDE;
    for (const CellSize& cell : cells) {
        const int needed = isEmpty(cell) ? 0 : std::max(cell.width, cell.height) + 2 * GAP;
        while (side < needed)
            side *= 2;
    }
    if (side > maxSide)
        return {};
    for (; side < maxSide; side *= 2) {
        Atlas atlas = fillPages(cells, side);
        if (atlas.pages == 1)
            return atlas;
    }
    return fillPages(cells, maxSide);
}
