// The list of the keys of the screen.

#include "tools/screen_keys.h"

#include <gtest/gtest.h>

namespace {

TEST(ScreenKeysSource, GivesEdgeAndSuffix) {
    std::string error;
    const auto keys = parseScreenKeys("# c\nSTR_A 1024  v1.1\nSTR_B 500\n", "keys.txt", error);
    ASSERT_TRUE(keys) << error;
    EXPECT_EQ(keys->size(), 2U);
    EXPECT_EQ(keys->at("STR_A").rightEdge, 1024);
    EXPECT_EQ(keys->at("STR_A").suffix, u" v1.1");
    EXPECT_EQ(keys->at("STR_B").rightEdge, 500);
    EXPECT_EQ(keys->at("STR_B").suffix, u"");
}

TEST(ScreenKeysSource, RefusesOtherLines) {
    for (const std::string line :
         {"STR_A", "STR_A ", "STR_A x", "STR_A -5", "STR_A 123456", " 5"}) {
        std::string error;
        EXPECT_FALSE(parseScreenKeys("STR_B 1\n" + line + "\n", "keys.txt", error)) << line;
        EXPECT_EQ(error, "keys.txt:2: expected a key, a blank and a number of pixels") << line;
    }
}

}  // namespace
