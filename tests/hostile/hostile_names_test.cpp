// Names that a key may bring. Each is either copied under its own name or left out; none does harm.

#include <cstdio>
#include <vector>

#include "tests/helpers/update_on_device.h"

namespace {

using HostileNames = UpdateOnDevice;

TEST_F(HostileNames, AreCopiedAsTheyAre) {
    const std::vector<std::string> names = {"two\nlines",
                                            "\"quoted\"",
                                            "100% %s %n %%",
                                            "caf\xC3\xA9 \xC2\xA9",
                                            "dots...",
                                            "blanks  ",
                                            " ",
                                            "-rf",
                                            "*",
                                            "?",
                                            "KSTRL Release 2",
                                            "a;b",
                                            "tab\there",
                                            std::string(190, 'n')};
    for (const std::string& name : names)
        device.write(KEY + ("KSTRL/" + name), "content of " + name);
    EXPECT_EQ(run(), UpdateComplete);
    for (const std::string& name : names)
        EXPECT_EQ(device.read(APPLICATION + name), "content of " + name) << name;
    EXPECT_EQ(log().find("ERROR"), std::string::npos) << log();
}

// Beyond 8-bit characters the engine's narrow paths cannot name a file; its copy fails, the rest of
// the update goes on.
TEST_F(HostileNames, ThatNarrowPathsCannotHoldAreLeftOut) {
    const std::vector<std::string> names = {"\xE6\x97\xA5\xE6\x9C\xAC", "bad \xFF\xFE utf-8",
                                            "\xF0\x9F\x92\xBE"};
    for (const std::string& name : names)
        device.write(KEY + ("KSTRL/" + name), "x");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
    EXPECT_NE(log().find("Error 2 ::SetFileAttributes"), std::string::npos);
}

// The whole path is longer than the system takes.
TEST_F(HostileNames, OfTheLargestLengthAreLeftOut) {
    device.write(KEY + ("KSTRL/" + std::string(255, 'n')), "x");
    device.write(KEY + ("ORBUI/data/" + std::string(255, 'd') + "/f"), "x");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw"), "picture 2");
}

}  // namespace
