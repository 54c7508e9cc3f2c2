// Whole updates by the program in its window.

#include "tests/blackbox/device_fixture.h"

namespace {

class UpdateProgram : public Instrument {
  protected:
    // Runs "/auto" on what is there to its end, and checks that it ended well.
    void updateByItself(const ChildProcess::Variables& variables = {}) {
        UpdaterProgram updater(device, display, "/auto", variables);
        EXPECT_EQ(updater.process().waitForEnd(), 0);
        printed = updater.process().output();
    }

    VirtualDisplay display;
    std::string printed;
};

TEST_F(UpdateProgram, ReplacesTheApplicationAndStartsIt) {
    plugIn();
    updateByItself();
    expectUpdated();
    EXPECT_EQ(installedVersion("KSTRL_old"), "1");
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI_old/data/bg.raw"), "picture 1");
    EXPECT_TRUE(waitUntil([this] { return applications().size() == 1; }));
    EXPECT_EQ(printed, "");
}

TEST_F(UpdateProgram, WaitsForAKeyAndForEachOfItsParts) {
    UpdaterProgram updater(device, display, "/auto");
    ASSERT_TRUE(updater.waitForScreen());
    device.makeFolder("USB HD/VELD/KSTRL");
    device.write("USB HD/VELD/ORBUI/data/bg.raw", "picture 2");
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    EXPECT_TRUE(updater.process().isRunning());
    EXPECT_FALSE(device.exists("FlashDisk/VELD/Update"));
    device.write("USB HD/VELD/KSTRL/version.txt", "2");
    EXPECT_TRUE(waitUntil([this] { return installedVersion() == "2"; }));
}

TEST_F(UpdateProgram, EndsTheRunningApplicationsFirst) {
    installApplication("FlashDisk/VELD/OTHER", "other");
    const std::string application = device.root() / "FlashDisk/VELD/KSTRL/KSTRL.exe";
    ChildProcess first({application});
    ChildProcess second({application});
    std::filesystem::copy_file(application, device.root() / "FlashDisk/VELD/KSTRL/KSTRLLF.exe");
    ChildProcess third({device.root() / "FlashDisk/VELD/KSTRL/KSTRLLF.exe"});
    std::filesystem::copy_file(application, device.root() / "FlashDisk/VELD/KSTRL/kstrl.exe");
    ChildProcess otherCase({device.root() / "FlashDisk/VELD/KSTRL/kstrl.exe"});
    ChildProcess onTheHost({STANDIN_PROGRAM});

    UpdaterProgram updater(device, display, "");
    ASSERT_TRUE(updater.waitForScreen());

    EXPECT_TRUE(
        waitUntil([&] { return !first.isRunning() && !second.isRunning() && !third.isRunning(); }));
    EXPECT_TRUE(otherCase.isRunning());
    EXPECT_TRUE(onTheHost.isRunning());
}

TEST_F(UpdateProgram, TakesWhatThereIsOnBothSides) {
    plugIn();
    device.write("FlashDisk/VELD/KSTRL_old/x", "oldest");
    device.setReadOnly("FlashDisk/VELD/KSTRL_old/x");
    device.write("FlashDisk/VELD/Update/KSTRL/version.txt", "half");
    device.setReadOnly("USB HD/VELD/KSTRL/version.txt");
    device.setReadOnly("FlashDisk/VELD/KSTRL/version.txt");
    device.write("USB HD/VELD/ORBUI/data/lang/extra/x", "not copied");
    device.write("USB HD/VELD/KSTRL/sub/x", "not copied");
    device.write("USB HD/VELD/KSTRL/a %s%n b.txt", "blanks and percent signs");
    device.write("USB HD/VELD/KSTRL/\xC3\x9C.txt", "a letter of Latin-1");

    updateByItself();

    expectUpdated();
    const Tree installed = device.tree("FlashDisk/VELD/KSTRL");
    EXPECT_EQ(installed.at("a %s%n b.txt"), "blanks and percent signs");
    EXPECT_EQ(installed.at("\xC3\x9C.txt"), "a letter of Latin-1");
    EXPECT_EQ(installed.size(), 4U);
    EXPECT_FALSE(device.exists("FlashDisk/VELD/KSTRL_old/x"));
}

TEST_F(UpdateProgram, InstallsWhereNothingWas) {
    plugIn();
    std::filesystem::remove_all(device.root() / "FlashDisk/VELD/KSTRL");
    updateByItself();
    expectUpdated();
    EXPECT_NE(log().find("Error 2 ::MoveFile: /FlashDisk/VELD/KSTRL -> "), std::string::npos);
}

TEST_F(UpdateProgram, CopiesThousandsOfFilesOneByOne) {
    plugIn();
    for (int i = 0; i < 5000; ++i)
        device.write("USB HD/VELD/ORBUI/data/lang/f" + std::to_string(i), std::to_string(i));
    // A small screen, so that the time goes into the files.
    updateByItself({{"UPDATER_SCREEN", "64x48"}});
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI/data/lang"),
              device.tree("USB HD/VELD/ORBUI/data/lang"));
    EXPECT_EQ(lastLogLine().rfind("  ** Warning ** Update succeeded at 2", 0), 0U);
}

TEST_F(UpdateProgram, SaysSoWhenThereAreNoReleaseNotes) {
    plugIn();
    std::filesystem::remove(device.root() / "USB HD/VELD/kstrXReleaseNotes.txt");
    updateByItself();
    EXPECT_EQ(printed, "Release notes not found.\n");
    expectUpdated();
}

}  // namespace
