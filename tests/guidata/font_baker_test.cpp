// Whether a baked face keeps what the renderer relies on, on the real fonts: ink beyond a cell
// shows as specks beside the next letter, and faces that differ from build to build cannot be
// compared.

#include "tools/guidata/font_baker.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "render/narrowing.h"
#include "tools/guidata/bmfont_writer.h"
#include "tools/guidata/typeface.h"

namespace {

BakeRequest latinRequest() {
    return {"Latin", FONT_LATIN, 0, 33.5, 50, 38, 1024, latin1(), {}};
}

BakeRequest japaneseRequest() {
    const std::u16string used = u"\u66F4\u65B0\u30AD\u30FC\u3092\u3044";
    return {"Japanese", FONT_JAPANESE, 0, 30, 50, 38, 1024, {used.begin(), used.end()}, {}};
}

BakedFace bake(const BakeRequest& request) {
    std::string error;
    std::optional<BakedFace> face = bakeFace(request, error);
    EXPECT_TRUE(face) << error;
    return face ? *face : BakedFace{};
}

std::string fntBytes(const BakedFace& face) {
    return encodeBmFont(face.font, face.fontName, face.emSize);
}

// Whether there is ink in a part of a glyph's cell; the cell's border is column or row -1.
bool hasInk(const BakedFace& face, const Glyph& glyph, int left, int top, int width, int height) {
    const int side = static_cast<int>(face.font.atlasSize);
    for (int i = 0; i < width * height; ++i) {
        const int index = (glyph.y + top + i / width) * side + glyph.x + left + i % width;
        if (face.pages[glyph.page].at(static_cast<std::size_t>(index)) != 0)
            return true;
    }
    return false;
}

TEST(FontBaker, BakesFacesThatReadBackAndComeOutTheSameEveryTime) {
    const BakedFace face = bake(japaneseRequest());
    const std::string bytes = fntBytes(face);
    FontData read;
    parseFont(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), read);
    EXPECT_EQ(read.lineHeight, 50U);
    EXPECT_EQ(encodeBmFont(read, face.fontName, face.emSize), bytes);
    const BakedFace again = bake(japaneseRequest());
    EXPECT_EQ(fntBytes(again), bytes);
    EXPECT_EQ(again.pages, face.pages);
}

TEST(FontBaker, LaysGlyphsIntoTheirLineWithABlankBorder) {
    const BakedFace face = bake(japaneseRequest());
    const int side = static_cast<int>(face.font.atlasSize);
    for (const auto& [code, glyph] : face.font.glyphs) {
        SCOPED_TRACE(code);
        EXPECT_GE(glyph.yoffset, 0);
        EXPECT_LE(glyph.yoffset + glyph.height, 50);
        EXPECT_GE(glyph.xadvance, 0);
        EXPECT_TRUE(!isNarrowed(code) || glyph.xadvance % 3 == 0);
        if (glyph.height == 0)
            continue;
        ASSERT_TRUE(glyph.x >= 1 && glyph.x + glyph.width < side);
        ASSERT_TRUE(glyph.y >= 1 && glyph.y + glyph.height < side);
        for (const int row : {-1, +glyph.height})
            EXPECT_FALSE(hasInk(face, glyph, 0, row, glyph.width, 1));
        for (const int column : {-1, +glyph.width})
            EXPECT_FALSE(hasInk(face, glyph, column, 0, 1, glyph.height));
    }
}

TEST(FontBaker, LeavesOutWhatTheFontLacksAndRefusesWhatDoesNotFit) {
    std::string error;
    BakeRequest request = latinRequest();
    request.characters = {u'A', u'\u66F4'};
    const BakedFace face = bake(request);
    EXPECT_EQ(face.missing, std::vector<char16_t>{u'\u66F4'});
    EXPECT_EQ(face.font.glyphs.size(), 1U);
    request.characters = {u'H', u'\u00C5'};
    request.base = 28;
    EXPECT_FALSE(bakeFace(request, error));
    EXPECT_EQ(error, "Latin: U+00C5 covers the rows -4 to 28 of a line of 50");

    request = latinRequest();
    request.maxPageSide = 64;
    EXPECT_EQ(bake(request).font.pageNames.at(10), "Latin_10.raw");
    request.maxPageSide = 32;
    EXPECT_FALSE(bakeFace(request, error));
    EXPECT_EQ(error, "Latin: the glyphs do not fit on pages of 32 pixels");
}

TEST(FontBaker, TakesHalfOfTheFontsKerningAndAnyFaceOfACollection) {
    std::string error;
    const auto typeface = Typeface::open(FONT_LATIN, 0, 33.5, error);
    ASSERT_NE(typeface, nullptr) << error;
    const KerningTable& kerning = bake(latinRequest()).font.kerning;
    EXPECT_LT(typeface->kerning(u'T', u'o'), -2);
    EXPECT_NEAR((kerning.at({u'T', u'o'})), typeface->kerning(u'T', u'o') / 2, 0.51);
    EXPECT_EQ(kerning.count({u'H', u'H'}), 0U);
    for (const auto& [pair, amount] : kerning)
        EXPECT_NE(amount, 0);

    const auto second = Typeface::open(FONT_CHINESE, 1, 20, error);
    ASSERT_NE(second, nullptr) << error;
    EXPECT_NE(Typeface::open(FONT_CHINESE, 0, 20, error)->familyName(), second->familyName());
}

}  // namespace
