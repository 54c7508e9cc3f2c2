// Whether a text that runs off the screen, or lacks a glyph, is told of before it is shipped.

#include "tools/guidata/text_fit.h"

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

TEST(TextFit, WarnsBeyondTheRightEdgeAndOnceOfACharacterThatTheFaceLacks) {
    using Warnings = std::vector<std::string>;
    struct Case {
        std::u16string text;
        TextUse use;
        Warnings warnings;
    };
    const Case cases[] = {
        {u"ab", {108, u""}, {}},
        {u"ab", {107, u""}, {"xx.txt:7: warning: STR_A ends at x 108, beyond 107"}},
        {u"ab", {167, u"0%"}, {"xx.txt:7: warning: STR_A ends at x 168, beyond 167"}},
        // Narrowed, as they are drawn; and one that is not.
        {u"\u66F4\u30AD", {88, u""}, {}},
        {u"\u3042", {77, u""}, {"xx.txt:7: warning: STR_A ends at x 78, beyond 77"}},
        {u"axbx", {108, u""}, {"xx.txt:7: warning: STR_A: the face has no U+0078"}},
    };
    for (const Case& test : cases)
        EXPECT_EQ(warningsOf(test.text, test.use), test.warnings);
}

}  // namespace
