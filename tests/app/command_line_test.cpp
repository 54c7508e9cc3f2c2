// Tests that no command line starts an update by mistake.

#include "app/command_line.h"

#include <gtest/gtest.h>

namespace {

struct Line {
    const char* text;
    bool autoMode;
    const char* first;
    const char* second;
};

TEST(CommandLine, SelectsAutoModeOrGivesTwoArguments) {
    const Line lines[] = {
        {"x/auto", true, "", ""},
        {"updater.exe /auto", true, "", ""},
        {"a;b/auto", true, "", ""},
        {"/auto", false, "", ""},
        {"updater.exe /AUTO", false, "", ""},
        {"updater.exe /auto ", false, "", ""},
        {"abc;def;ghi", false, "abc", "def;ghi"},
        {"abc;", false, "abc", ""},
        {";abc", false, "", "abc"},
        {"/auto;", false, "/auto", ""},
        {"abc", false, "", ""},
        {"", false, "", ""},
    };
    for (const Line& line : lines) {
        SCOPED_TRACE(line.text);
        const CommandLine parsed = parseCommandLine(line.text);
        EXPECT_EQ(parsed.autoMode, line.autoMode);
        EXPECT_EQ(parsed.firstArgument, line.first);
        EXPECT_EQ(parsed.secondArgument, line.second);
    }
}

}  // namespace
