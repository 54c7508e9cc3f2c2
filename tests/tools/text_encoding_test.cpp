// UTF-8 in, UTF-16LE out.

#include "tools/text_encoding.h"

#include <gtest/gtest.h>

namespace {

TEST(TextEncoding, ReadsUtf8) {
    EXPECT_EQ(utf16FromUtf8("A\xC3\xA9\xE6\x9B\xB4"), u"A\u00E9\u66F4");
    EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x98\x80"), u"\U0001F600");
    EXPECT_EQ(utf16FromUtf8("\xEF\xBB\xBF#"), u"#");
    EXPECT_EQ(utf16FromUtf8(""), u"");
}

TEST(TextEncoding, RefusesWhatIsNotUtf8) {
    const char* const malformed[] = {
        "\xE9",              // Latin-1
        "\x80",              // no lead byte
        "\xC3",              // cut off
        "\xE6\x9B",          // cut off
        "\xC3(",             // wrong second byte
        "\xC0\xAF",          // longer than needed
        "\xE0\x80\xAF",      // longer than needed
        "\xF0\x80\x80\xAF",  // longer than needed
        "\xED\xA0\x80",      // half of a surrogate pair
        "\xF4\x90\x80\x80",  // beyond Unicode
        "\xFF",
    };
    for (const char* const bytes : malformed)
        EXPECT_FALSE(utf16FromUtf8(bytes)) << testing::PrintToString(bytes);
}

TEST(TextEncoding, WritesTheLowByteFirst) {
    EXPECT_EQ(utf16LittleEndian(u"A\u66F4"), std::string("A\0\xF4\x66", 4));
    EXPECT_EQ(characterName(u'\u00E9'), "U+00E9");
}

}  // namespace
