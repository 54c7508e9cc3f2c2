// Tests that a damaged font file is not read beyond its end, and keeps its valid glyphs.

#include "render/font_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/helpers/device_folder.h"
#include "tests/helpers/font_bytes.h"

namespace {

const std::string HEADER = "BMF\3";
const Glyph A = {'A', 1, 2, 3, 4, -5, -6, 7, 0, 15};
const Glyph B = {0x10000 + 'B', 9, 9, 9, 9, 0, 0, 9, 1, 15};
const Glyph B2 = {'B', 8, 8, 8, 8, 0, 0, 8, 0, 15};

// Parses a copy in a buffer of the exact size, so that sanitizers detect a read beyond it.
FontData parse(const std::string& bytes) {
    const std::vector<unsigned char> exact(bytes.begin(), bytes.end());
    FontData font;
    parseFont(exact.data(), exact.size(), font);
    return font;
}

// A later record of a character or a pair replaces an earlier one.
TEST(FontFile, ReadsEveryField) {
    const FontData font =
        parse(HEADER + block(1, "info") + commonBlock(17, 13, 256) +
              block(3, std::string("a 0.png\0a 1.png\0a.png\0\0\0", 24)) +
              block(4, glyphRecord(B2) + glyphRecord(A) + glyphRecord(B)) +
              block(5, kerningRecord('A', 0x20AC1, 5) + kerningRecord('A', 0x20AC1, -2)));
    EXPECT_EQ(font.lineHeight, 17U);
    EXPECT_EQ(font.base, 13U);
    EXPECT_EQ(font.atlasSize, 256U);
    EXPECT_EQ(font.pageNames, (std::vector<std::string>{"a 0.png", "a 1.png", "a.png"}));
    EXPECT_EQ(font.kerning, (KerningTable{{{'A', 0x20AC1}, -2}}));
    ASSERT_EQ(font.glyphs.size(), 2U);
    EXPECT_EQ(glyphRecord(font.glyphs.at('A')), glyphRecord(A));
    EXPECT_EQ(glyphRecord(font.glyphs.at('B')),
              glyphRecord(B));  // the key is the low 16 bits of the id
}

TEST(FontFile, KeepsTheValidPartOfADamagedFile) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* read;  // glyphs, pages, pairs and atlas size read
    };
    const std::string glyph = block(4, glyphRecord(A));
    const std::string empty = block(5, "");
    const std::string threeEmpty = empty + empty + empty;
    const std::vector<Case> cases = {
        {"empty file", "", "0 0 0 0"},
        {"header cut off", "BMF", "0 0 0 0"},
        {"other version", "BMF\2" + glyph, "0 0 0 0"},
        {"no blocks", HEADER, "0 0 0 0"},
        {"fewer blocks", HEADER + glyph + commonBlock(1, 1, 64), "1 0 0 64"},
        {"a sixth block", HEADER + glyph + threeEmpty + empty + pageBlock(), "1 0 0 0"},
        {"block header cut off", HEADER + glyph + std::string("\3\1\0\0", 4), "1 0 0 0"},
        {"negative size", HEADER + glyph + "\5" + u32Bytes(0xFFFFFFFF) + kerningRecord(1, 2, 3),
         "1 0 0 0"},
        {"huge size", HEADER + commonBlock(1, 1, 64) + "\4" + u32Bytes(0x7FFFFFFF) + glyphRecord(A),
         "1 0 0 64"},
        {"short common block", HEADER + block(2, "abc") + glyph, "1 0 0 0"},
        {"shortest common block", HEADER + block(2, commonBlock(1, 1, 64).substr(5, 6)) + glyph,
         "1 0 0 64"},
        {"empty block", HEADER + empty + glyph, "1 0 0 0"},
        {"unknown type", HEADER + block(77, "abc") + glyph, "1 0 0 0"},
        {"5 bytes too many", HEADER + block(4, glyphRecord(A) + glyphRecord(B) + "12345"),
         "2 0 0 0"},
        {"half a pair", HEADER + block(5, kerningRecord(1, 2, 3) + "12345"), "0 0 1 0"},
        {"pairs behind a page that is too large",
         HEADER + commonBlock(1, 1, 65535) + pageBlock() + block(5, kerningRecord(1, 2, 3)),
         "0 1 0 65535"},
        {"no page names", HEADER + block(3, ""), "0 0 0 0"},
        {"name without an end", HEADER + block(3, "a_0.png") + glyph, "1 0 0 0"},
        {"second name without an end", HEADER + block(3, std::string("a\0b", 3)), "0 1 0 0"},
        {"more empty names than a glyph can tell", HEADER + block(3, std::string(300, '\0')),
         "0 256 0 0"},
    };
    for (const Case& damaged : cases) {
        SCOPED_TRACE(damaged.name);
        const FontData font = parse(damaged.bytes);
        std::ostringstream read;
        read << font.glyphs.size() << ' ' << font.pageNames.size() << ' ' << font.kerning.size()
             << ' ' << font.atlasSize;
        EXPECT_EQ(read.str(), damaged.read);
    }
}

TEST(KerningFile, EachLineSetsOnePair) {
    const std::pair<LPCWSTR, KerningTable> cases[] = {
        {TEXT("AV -2\r\n"), {{{'A', 'V'}, -2}}},
        {TEXT("AV\t  +3x"), {{{'A', 'V'}, 3}}},
        {TEXT("\u30A2,;65535\n"), {{{0x30A2, ','}, -1}}},
        {TEXT("AV none\n"), {{{'A', 'V'}, 0}}},
        {TEXT("AV 08"), {{{'A', 'V'}, 8}}},
        {TEXT("AV \r\n"), {{{'A', 'V'}, 0}}},
        {TEXT("#V -2\n"), {}},
        {TEXT("AV\n"), {}},
        {TEXT("AV\r\n"), {}},
        {TEXT("\r\n"), {}},
        {TEXT(""), {}},
    };
    for (const auto& [line, expected] : cases) {
        KerningTable kerning;
        parseKerningLine(line, kerning);
        EXPECT_EQ(kerning, expected) << narrow(line);
    }
}

TEST(KerningFile, OverridesThePairsOfTheFont) {
    DeviceFolder device;
    device.write("/f.kern", utf16Bytes(TEXT("\uFEFFAV -2\r\n# note\r\nTo -1")));
    FontData font;
    font.kerning = {{{'A', 'V'}, 5}, {{'A', 'T'}, 6}};
    loadKerningFile("/f.kern", font);
    loadKerningFile("/missing.kern", font);
    EXPECT_EQ(font.kerning, (KerningTable{{{'A', 'T'}, 6}, {{'A', 'V'}, -2}, {{'T', 'o'}, -1}}));

    // The pages use all the memory that a face may have: one pair is too much, and reading stops.
    FontData large;
    large.atlasSize = 2048;
    large.pageNames.resize(16);
    EXPECT_FALSE(needsTooMuchMemory(large));
    loadKerningFile("/f.kern", large);
    EXPECT_EQ(large.kerning.size(), 1U);
    EXPECT_TRUE(needsTooMuchMemory(large));
}

}  // namespace
