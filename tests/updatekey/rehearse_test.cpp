// Tests that a rehearsal's report is true, by running the real program on a copy of a device, and
// that the device itself stays unchanged.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/helpers/device_folder.h"
#include "tests/updatekey/sound_key.h"
#include "tools/updatekey/rehearse.h"
#include "update/updater.h"

namespace {

namespace fs = std::filesystem;

class Rehearsal : public ::testing::Test {
  protected:
    Rehearsal() {
        work.write("device/FlashDisk/VELD/KSTRL/KSTRL.exe", "old");
        work.write("device/FlashDisk/VELD/ORBUI/data/old", "old");
        writeSoundKey(work.root() / "key");
        const fs::path application = work.root() / "key/VELD/KSTRL/KSTRL.exe";
        fs::copy_file(STANDIN_PROGRAM, application, fs::copy_options::overwrite_existing);
        options.key = work.root() / "key";
        options.device = work.root() / "device";
        options.updater = UPDATER_PROGRAM;
        options.hidden = true;
        options.timeout = 120;
        // The address sanitizer requires its library to be the first one loaded, but the frame
        // counter is.
        ::setenv("ASAN_OPTIONS", "detect_leaks=0:verify_asan_link_order=0", 1);
    }

    DeviceFolder work;
    RehearseOptions options;
};

// The key has faults whose effects are predicted correctly: no release notes, a file that is not
// copied, and one whose name does not fit.
TEST_F(Rehearsal, ReportsTheChangesAndLeavesTheDeviceUnchanged) {
    fs::remove(options.key / "VELD/kstrXReleaseNotes.txt");
    writeFile(options.key / "VELD/KSTRL/plugins/a.dll", "x");
    writeFile(options.key / "VELD/KSTRL/\xC5\x81ukasz.dat", "x");
    const Tree before = work.tree("device");
    options.keep = work.root() / "kept";
    const RehearseReport report = rehearse(options);
    EXPECT_EQ(report.state, UpdateComplete);
    EXPECT_TRUE(report.asPredicted);
    EXPECT_TRUE(report.applicationStarted);
    EXPECT_EQ(report.exitCode, 0);
    EXPECT_GE(report.frames, static_cast<long>(report.check.prediction.copied.size()));
    EXPECT_NE(report.log.find("Update succeeded at "), std::string::npos);
    EXPECT_EQ(report.differences.at("VELD/KSTRL/KSTRL.exe"), '~');
    EXPECT_EQ(report.differences.at("VELD/KSTRL_old/KSTRL.exe"), '+');
    EXPECT_EQ(report.differences.at("VELD/ORBUI/data/old"), '-');
    EXPECT_EQ(work.tree("device"), before);
    EXPECT_EQ(work.read("kept/FlashDisk/VELD/KSTRL_old/KSTRL.exe"), "old");
}

TEST_F(Rehearsal, ReportsAFailedUpdate) {
    fs::remove_all(work.root() / "device/FlashDisk/VELD/ORBUI");
    const RehearseReport report = rehearse(options);
    EXPECT_EQ(report.state, UpdateFailed);
    EXPECT_FALSE(report.asPredicted) << "the prediction is for a device with an installation";
    EXPECT_FALSE(report.timedOut);
    EXPECT_FALSE(report.applicationStarted);
}

}  // namespace
