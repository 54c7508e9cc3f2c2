// Where glyph cells come to lie on the pages.

#include "tools/atlas.h"

#include <gtest/gtest.h>

namespace {

bool apart(const CellPlace& a, const CellSize& sizeA, const CellPlace& b, const CellSize& sizeB) {
    return a.page != b.page || a.x + sizeA.width + 1 <= b.x || b.x + sizeB.width + 1 <= a.x ||
           a.y + sizeA.height + 1 <= b.y || b.y + sizeB.height + 1 <= a.y;
}

TEST(Atlas, KeepsCellsApartAndInside) {
    std::vector<CellSize> cells;
    for (int i = 0; i < 150; ++i)
        cells.push_back({3 + i * 7 % 19, 2 + i * 5 % 23});
    for (const int maxSide : {64, 256, 1024}) {
        const Atlas atlas = packAtlas(cells, maxSide);
        EXPECT_LE(atlas.side, maxSide);
        ASSERT_EQ(atlas.places.size(), cells.size());
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const CellPlace& place = atlas.places[i];
            EXPECT_TRUE(place.page >= 0 && place.page < atlas.pages) << i;
            EXPECT_TRUE(place.x >= 1 && place.x + cells[i].width + 1 <= atlas.side) << i;
            EXPECT_TRUE(place.y >= 1 && place.y + cells[i].height + 1 <= atlas.side) << i;
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_TRUE(apart(place, cells[i], atlas.places[j], cells[j])) << i << " and " << j;
        }
    }
}

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
