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
    // A letter of Latin-1, sequences that are cut off or broken, longer than needed, half of a
    // surrogate pair, and beyond Unicode.
    const char* const malformed[] = {"\xE9",         "\x80",
                                     "\xC3",         "\xE6\x9B",
                                     "\xC3(",        "\xC0\xAF",
                                     "\xE0\x80\xAF", "\xF0\x80\x80\xAF",
                                     "\xED\xA0\x80", "\xF4\x90\x80\x80",
                                     "\xFF"};
    for (const char* const bytes : malformed)
        EXPECT_FALSE(utf16FromUtf8(bytes)) << testing::PrintToString(bytes);
}

TEST(TextEncoding, WritesTheLowByteFirst) {
    EXPECT_EQ(utf16LittleEndian(u"A\u66F4"), std::string("A\0\xF4\x66", 4));
    EXPECT_EQ(characterName(u'\u00E9'), "U+00E9");
}

}  // namespace
