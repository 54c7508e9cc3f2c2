// What the program in its window does by itself.

#include "tests/blackbox/device_fixture.h"

namespace {

class UpdateProgram : public Instrument {
  protected:
    VirtualDisplay display;
};

TEST_F(UpdateProgram, ReplacesTheApplicationAndStartsIt) {
    plugIn();
    UpdaterProgram updater(device, display, "/auto", {{"UPDATER_SCREEN", "64x48"}});
    EXPECT_EQ(updater.process().waitForEnd(), 0);
    expectUpdated();
    EXPECT_EQ(installedVersion("KSTRL_old"), "1");
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI_old/data/bg.raw"), "picture 1");
    EXPECT_TRUE(waitUntil([this] { return applications().size() == 1; }));
    EXPECT_EQ(updater.process().output(), "");
}

TEST_F(UpdateProgram, EndsTheRunningApplicationsFirst) {
    const std::filesystem::path folder = device.root() / "FlashDisk/VELD/KSTRL";
    for (const char* const other : {"KSTRLLF.exe", "kstrl.exe"})
        std::filesystem::copy_file(STANDIN_PROGRAM, folder / other);
    ChildProcess first({folder / "KSTRL.exe"});
    ChildProcess second({folder / "KSTRL.exe"});
    ChildProcess third({folder / "KSTRLLF.exe"});
    ChildProcess otherCase({folder / "kstrl.exe"});
    ChildProcess onTheHost({STANDIN_PROGRAM});

    UpdaterProgram updater(device, display, "");
    EXPECT_TRUE(
        waitUntil([&] { return !first.isRunning() && !second.isRunning() && !third.isRunning(); }));
    ASSERT_TRUE(updater.waitForScreen());
    EXPECT_TRUE(otherCase.isRunning());
    EXPECT_TRUE(onTheHost.isRunning());
}

}  // namespace
