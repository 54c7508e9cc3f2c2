// Whether a name on a key can do harm: each is either copied under its own name or left out, and
// the rest of the update goes on.

#include "tests/helpers/update_on_device.h"

namespace {

using HostileNames = UpdateOnDevice;

// A name with the low bytes of "../", which are those of U+012E and U+012F.
constexpr const char* UPWARDS = "\u012E\u012E\u012F";

TEST_F(HostileNames, AreCopiedAsTheyAreOrLeftOut) {
    Tree expected = {{"KSTRL.exe", "application 2"}};
    for (const std::string name : {"100% %s %n %%", "caf\xC3\xA9 \xC2\xA9", "dots...", "blanks  ",
                                   " ", "-rf", "KSTRL Release 2", "a;b"}) {
        device.write(KEY + ("KSTRL/" + name), "content of " + name);
        expected[name] = "content of " + name;
    }
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), expected);
    EXPECT_EQ(log().find("ERROR"), std::string::npos) << log();

    // No path holds these, nor the "?" that a narrow path has for what lies beyond 8-bit
    // characters; with the last ones the whole path is longer than the system takes.
    device.write("USB HD/survey.DZT", "overwritten");
    device.write("FlashDisk/VELD/survey.DZT", "survey");
    const std::string names[] = {"\xE6\x97\xA5\xE6\x9C\xAC",
                                 "bad \xFF\xFE utf-8",
                                 "\xF0\x9F\x92\xBE",
                                 "*",
                                 "?",
                                 "\"quoted\"",
                                 "two\nlines",
                                 std::string(UPWARDS) + UPWARDS + "survey.DZT",
                                 std::string(255, 'n')};
    for (const std::string& name : names)
        device.write(KEY + ("KSTRL/" + name), "x");
    device.write(KEY + ("ORBUI/data/" + std::string(255, 'd') + "/f"), "x");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), expected);
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw"), "picture 2");
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

}  // namespace
