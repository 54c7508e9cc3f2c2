// A device with an installed version 1 and, once plugged in, a key with version 2.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/blackbox/updater_program.h"
#include "tools/updatekey/child_process.h"

class Instrument : public ::testing::Test {
  protected:
    void SetUp() override {
        installApplication("FlashDisk/VELD/KSTRL", "1");
        device.write("FlashDisk/VELD/ORBUI/data/bg.raw", "picture 1");
    }

    void TearDown() override {
        for (const pid_t process : applications())
            ::kill(process, SIGKILL);
    }

    // The stand-in for the instrument's application, with its version beside it.
    void installApplication(const std::string& folder, const std::string& version) const {
        device.write(folder + "/version.txt", version);
        std::filesystem::copy_file(STANDIN_PROGRAM, device.root() / folder / "KSTRL.exe");
    }

    void plugIn() const {
        // Complete at once, as a key that is mounted is.
        const std::string hidden = "USB HD/being-written";
        installApplication(hidden + "/KSTRL", "2");
        device.write(hidden + "/ORBUI/data/bg.raw", "picture 2");
        device.write(hidden + "/ORBUI/data/lang/en.txt", "texts 2");
        device.write(hidden + "/kstrXReleaseNotes.txt", "KSTRL Release 2\nnotes\n");
        std::filesystem::rename(device.root() / hidden, device.root() / "USB HD/VELD");
    }

    std::string installedVersion(const std::string& folder = "KSTRL") const {
        return device.read("FlashDisk/VELD/" + folder + "/version.txt");
    }

    std::string log() const { return device.read("FlashDisk/VELD/Updater-log.txt"); }

    void expectUpdated() const {
        EXPECT_EQ(installedVersion(), "2");
        EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"), (Tree{{"data/", ""},
                                                             {"data/bg.raw", "picture 2"},
                                                             {"data/lang/", ""},
                                                             {"data/lang/en.txt", "texts 2"}}));
        EXPECT_FALSE(device.exists("FlashDisk/VELD/Update"));
        EXPECT_NE(log().find("\n  ** Warning ** Update succeeded at 2"), std::string::npos);
    }

    std::vector<pid_t> applications() const { return processesOf(device.root()); }

    DeviceFolder device;
};
