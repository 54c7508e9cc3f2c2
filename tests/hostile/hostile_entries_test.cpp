// Whether an entry that is not what is expected at its place stops the frame loop, leads out of the
// device, fills the disk or costs the installation.

#include <sys/stat.h>

#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

using HostileEntries = UpdateOnDevice;

TEST_F(HostileEntries, AreLeftOutOrTakenForWhatTheyAre) {
    const fs::path key = device.root() / KEY;
    // Opening a pipe would wait for its other end.
    ASSERT_EQ(::mkfifo((key / "KSTRL/pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((key / "kstrXReleaseNotes.txt").c_str(), 0600), 0);
    fs::remove(key / "ORBUI/data/bg.raw");
    device.write(KEY + std::string("ORBUI/data/bg.raw/x"), "in a folder");
    // Its holes stay holes: it needs no more room on the flash disk than on the key.
    constexpr uintmax_t size = (uintmax_t{4} << 30) + 1;
    device.write(KEY + std::string("KSTRL/sparse"), "head");
    fs::resize_file(key / "KSTRL/sparse", size);
    device.write("FlashDisk/VELD/Projects/survey.dzt", "a day in the field");
    device.makeFolder("FlashDisk/VELD/KSTRL_old");
    fs::create_symlink("../Projects", device.root() / "FlashDisk/VELD/KSTRL_old/projects");

    EXPECT_EQ(run(), UpdateComplete);
    struct stat status {};
    const fs::path sparse = device.root() / "FlashDisk/VELD/KSTRL/sparse";
    ASSERT_EQ(::stat(sparse.c_str(), &status), 0);
    EXPECT_EQ(static_cast<uintmax_t>(status.st_size), size);
    EXPECT_LT(status.st_blocks, 4096);
    fs::remove(sparse);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw/x"), "in a folder");
    EXPECT_EQ(device.read("FlashDisk/VELD/Projects/survey.dzt"), "a day in the field");
    EXPECT_FALSE(device.exists("FlashDisk/VELD/KSTRL_old/projects"));

    device.write("FlashDisk/VELD/Update", "a file in the way");
    EXPECT_EQ(run(), UpdateFailed);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL_old/KSTRL.exe"), "application 2");
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI_old/data/bg.raw/x"), "in a folder");
}

}  // namespace
