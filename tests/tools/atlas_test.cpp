// Where glyph cells come to lie on the pages.

#include "tools/atlas.h"

#include <gtest/gtest.h>

namespace {

TEST(Atlas, TakesTheFewestAndSmallestPages) {
    struct Case {
        std::vector<CellSize> cells;
        int maxSide;
        int side;
        int pages;
    };
    const Case cases[] = {
        // Three rows of three with a pixel around each fill 31 of 32 pixels.
        {std::vector<CellSize>(9, {9, 9}), 1024, 32, 1},
        {std::vector<CellSize>(10, {9, 9}), 1024, 64, 1},
        {std::vector<CellSize>(10, {9, 9}), 32, 32, 2},
        {{{30, 30}}, 1024, 32, 1},
        {{{31, 5}}, 1024, 64, 1},
        {{{5, 5}, {62, 62}}, 64, 64, 2},
        {{{0, 0}, {30, 30}, {0, 7}}, 32, 32, 1},
    };
    for (const Case& test : cases) {
        const Atlas atlas = packAtlas(test.cells, test.maxSide);
        EXPECT_EQ(atlas.side, test.side);
        EXPECT_EQ(atlas.pages, test.pages);
    }
    EXPECT_EQ(packAtlas({{5, 5}, {63, 5}}, 64).pages, 0) << "too large for a page";
}

}  // namespace
