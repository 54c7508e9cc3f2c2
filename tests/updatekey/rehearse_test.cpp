// The real program on a screen of its own: what it does with a handful of keys is what was said.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/device_folder.h"
#include "tests/updatekey/faulty_keys.h"
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
        // A build with the address sanitizer wants to be the first library; the counter is.
        ::setenv("ASAN_OPTIONS", "detect_leaks=0:verify_asan_link_order=0", 1);
    }

    DeviceFolder work;
    RehearseOptions options;
};

TEST_F(Rehearsal, TellsWhatTheUpdateChangesAndLeavesTheDeviceAlone) {
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

TEST_F(Rehearsal, EndsAnUpdateThatFails) {
    fs::remove_all(work.root() / "device/FlashDisk/VELD/ORBUI");
    const RehearseReport report = rehearse(options);
    EXPECT_EQ(report.state, UpdateFailed);
    EXPECT_FALSE(report.asPredicted) << "the prediction is for a device with an installation";
    EXPECT_FALSE(report.timedOut);
    EXPECT_FALSE(report.applicationStarted);
}

TEST_F(Rehearsal, DoesWhatWasPredictedWithFaultyKeys) {
    const std::set<std::string> chosen = {"no notes",        "subfolder of the application",
                                          "outside Latin-1", "too long for the staging area",
                                          "table in UTF-8",  "GUI folder without data"};
    std::size_t rehearsed = 0;
    for (const FaultyKey& faulty : faultyKeys()) {
        if (chosen.count(faulty.name) == 0)
            continue;
        SCOPED_TRACE(faulty.name);
        ++rehearsed;
        options.key = work.root() / faulty.name;
        fs::copy(work.root() / "key", options.key, fs::copy_options::recursive);
        faulty.spoil(options.key);
        const RehearseReport report = rehearse(options);
        EXPECT_EQ(report.rehearsed, faulty.seen);
        EXPECT_EQ(report.asPredicted, faulty.seen);
        EXPECT_EQ(report.applicationStarted, faulty.seen);
    }
    EXPECT_EQ(rehearsed, chosen.size());
}

}  // namespace
