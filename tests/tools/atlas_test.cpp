// Where glyph cells come to lie on the pages.

#include "tools/atlas.h"

#include <gtest/gtest.h>

namespace {

bool apart(const CellPlace& a, const CellSize& sizeA, const CellPlace& b, const CellSize& sizeB) {
    return a.page != b.page || a.x + sizeA.width + 1 <= b.x || b.x + sizeB.width + 1 <= a.x ||
           a.y + sizeA.height + 1 <= b.y || b.y + sizeB.height + 1 <= a.y;
}

void expectSound(const Atlas& atlas, const std::vector<CellSize>& cells) {
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

std::vector<CellSize> mixedCells(int count) {
    std::vector<CellSize> cells;
    cells.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        cells.push_back({3 + i * 7 % 19, 2 + i * 5 % 23});
    return cells;
}

TEST(Atlas, KeepsCellsApartAndInside) {
    for (const int maxSide : {64, 256, 1024}) {
        const std::vector<CellSize> cells = mixedCells(150);
        const Atlas atlas = packAtlas(cells, maxSide);
        EXPECT_LE(atlas.side, maxSide);
        expectSound(atlas, cells);
    }
}

TEST(Atlas, TakesTheSmallestPageThatHoldsAll) {
    // Three rows of three with a pixel around each fill 31 of 32 pixels.
    const std::vector<CellSize> nine(9, {9, 9});
    EXPECT_EQ(packAtlas(nine, 1024).side, 32);
    const std::vector<CellSize> ten(10, {9, 9});
    EXPECT_EQ(packAtlas(ten, 1024).side, 64);
    EXPECT_EQ(packAtlas({{30, 30}}, 1024).side, 32);
    EXPECT_EQ(packAtlas({{31, 5}}, 1024).side, 64);
}

TEST(Atlas, GoesOnToFurtherPages) {
    const std::vector<CellSize> ten(10, {9, 9});
    const Atlas atlas = packAtlas(ten, 32);
    EXPECT_EQ(atlas.pages, 2);
    expectSound(atlas, ten);
}

TEST(Atlas, HasNoPageForACellThatIsTooLarge) {
    EXPECT_EQ(packAtlas({{5, 5}, {63, 5}}, 64).pages, 0);
    EXPECT_EQ(packAtlas({{5, 5}, {62, 62}}, 64).pages, 2);
}

TEST(Atlas, GivesNoRoomToEmptyCells) {
    const Atlas atlas = packAtlas({{0, 0}, {30, 30}, {0, 7}}, 32);
    EXPECT_EQ(atlas.pages, 1);
    EXPECT_EQ(atlas.places[0].x, 0);
}

}  // namespace
