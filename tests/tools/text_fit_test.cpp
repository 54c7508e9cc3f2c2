// Which texts the screen cannot show.

#include "tools/text_fit.h"

#include <gtest/gtest.h>

namespace {

FontData faceOf(const std::u16string& characters, int16_t advance) {
    FontData face;
    for (const char16_t character : characters) {
        Glyph glyph{};
        glyph.id = character;
        glyph.xadvance = advance;
        face.glyphs[character] = glyph;
    }
    return face;
}

std::vector<std::string> warningsOf(const std::u16string& text, const TextUse& use) {
    MessageList messages;
    checkTexts({{7, "STR_A", text}}, "xx.txt", {{"STR_A", use}},
               faceOf(u"ab0%\u30AD\u66F4\u3042", 30), messages);
    EXPECT_TRUE(messages.errors.empty());
    return messages.warnings;
}

TEST(TextFit, MeasuresAsTheTextIsDrawn) {
    const FontData face = faceOf(u"a\u30A0\u30FF\u4E00\u9FFF\u309F\u3100\uA000", 30);
    EXPECT_DOUBLE_EQ(drawnWidth(u"aa", face), 60);
    EXPECT_DOUBLE_EQ(drawnWidth(u"a?a", face), 60);  // takes no room
    EXPECT_DOUBLE_EQ(drawnWidth(u"\u30A0\u30FF\u4E00\u9FFF", face), 80);
    EXPECT_DOUBLE_EQ(drawnWidth(u"\u309F\u3100\uA000", face), 90);
}

TEST(TextFit, WarnsBeyondTheRightEdge) {
    EXPECT_TRUE(warningsOf(u"ab", {108, u""}).empty());
    EXPECT_EQ(warningsOf(u"ab", {107, u""}),
              std::vector<std::string>{"xx.txt:7: warning: STR_A ends at x 108, beyond 107"});
    EXPECT_EQ(warningsOf(u"ab", {167, u"0%"}),
              std::vector<std::string>{"xx.txt:7: warning: STR_A ends at x 168, beyond 167"});
    EXPECT_TRUE(warningsOf(u"\u66F4\u30AD", {88, u""}).empty());
}

TEST(TextFit, WarnsOnceOfACharacterThatTheFaceLacks) {
    EXPECT_EQ(warningsOf(u"axbx", {1024, u""}),
              std::vector<std::string>{"xx.txt:7: warning: STR_A: the face has no U+0078"});
    EXPECT_EQ(warningsOf(u"\U0001F600", {1024, u""}).size(), 2U);
}

}  // namespace
