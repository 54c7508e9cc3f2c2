// Names that a key may bring. Each is either copied under its own name or left out; none does harm.

#include <cstdio>
#include <vector>

#include "tests/helpers/update_on_device.h"

namespace {

using HostileNames = UpdateOnDevice;

TEST_F(HostileNames, AreCopiedAsTheyAre) {
    const std::vector<std::string> names = {
        "100% %s %n %%", "caf\xC3\xA9 \xC2\xA9", "dots...", "blanks  ",           " ",
        "-rf",           "KSTRL Release 2",      "a;b",     std::string(190, 'n')};
    for (const std::string& name : names)
        device.write(KEY + ("KSTRL/" + name), "content of " + name);
    EXPECT_EQ(run(), UpdateComplete);
    for (const std::string& name : names)
        EXPECT_EQ(device.read(APPLICATION + name), "content of " + name) << name;
    EXPECT_EQ(log().find("ERROR"), std::string::npos) << log();
}

// A name with the low bytes of "../", which are those of U+012E and U+012F.
constexpr const char* UPWARDS = "\u012E\u012E\u012F";

// No path holds these, nor the "?" that a narrow path has for what lies beyond 8-bit characters.
// The copy of such a file fails, the rest of the update goes on.
TEST_F(HostileNames, ThatNoPathHoldsAreLeftOut) {
    device.write("USB HD/survey.DZT", "overwritten");
    device.write("FlashDisk/VELD/survey.DZT", "survey");
    const std::vector<std::string> names = {"\xE6\x97\xA5\xE6\x9C\xAC",
                                            "bad \xFF\xFE utf-8",
                                            "\xF0\x9F\x92\xBE",
                                            "*",
                                            "?",
                                            "\"quoted\"",
                                            "two\nlines",
                                            std::string(UPWARDS) + UPWARDS + "survey.DZT"};
    for (const std::string& name : names)
        device.write(KEY + ("KSTRL/" + name), "x");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
    EXPECT_NE(log().find("Error 123 ::SetFileAttributes"), std::string::npos);
    EXPECT_EQ(device.read("FlashDisk/VELD/survey.DZT"), "survey");
}

TEST_F(HostileNames, ThatNoPathHoldsAreNotDeletedForOthers) {
    const std::string backup = "FlashDisk/VELD/KSTRL_old/";
    device.write("FlashDisk/VELD/survey.DZT", "survey");
    device.write(backup + UPWARDS + "survey.DZT", "x");
    // Both have the low byte of "/".
    device.makeFolder(backup + "\u552F");
    device.makeFolder(backup + "\u562F");
    EXPECT_EQ(run(), UpdateFailed);
    EXPECT_NE(log().find("Error 123 deleting file: /FlashDisk/VELD/KSTRL_old\\???survey.DZT"),
              std::string::npos);
    EXPECT_EQ(device.read("FlashDisk/VELD/survey.DZT"), "survey");
    EXPECT_EQ(device.read(APPLICATION + std::string("KSTRL.exe")), "application 1");
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
