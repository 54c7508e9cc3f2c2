// Whether an entry that is not what is expected at its place stops the frame loop, leads out of the
// device or costs the installation.

#include <sys/stat.h>

#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

class HostileEntries : public UpdateOnDevice {
  protected:
    fs::path onKey(const std::string& name) const { return device.root() / (KEY + name); }
};

// Opening a pipe would wait for its other end, and the frame loop with it.
TEST_F(HostileEntries, PipesAreNotWaitedFor) {
    ASSERT_EQ(::mkfifo(onKey("KSTRL/pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(onKey("kstrXReleaseNotes.txt").c_str(), 0600), 0);
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"),
              (Tree{{"data/", ""}, {"data/bg.raw", "picture 2"}}));
}

TEST_F(HostileEntries, LinksInTheBackupAreDeletedNotFollowed) {
    device.write("FlashDisk/VELD/Projects/survey.dzt", "a day in the field");
    device.write("FlashDisk/VELD/KSTRL_old/a", "oldest");
    fs::create_symlink("../Projects", device.root() / "FlashDisk/VELD/KSTRL_old/projects");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/Projects/survey.dzt"), "a day in the field");
    EXPECT_FALSE(device.exists("FlashDisk/VELD/KSTRL_old/projects"));
}

TEST_F(HostileEntries, AFolderAtAFilesPlaceIsNotCopied) {
    fs::remove(onKey("ORBUI/data/bg.raw"));
    device.write(KEY + std::string("ORBUI/data/bg.raw/x"), "in a folder");
    device.makeFolder(KEY + std::string("kstrXReleaseNotes.txt"));
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw/x"), "in a folder");
}

TEST_F(HostileEntries, AFileInTheStagingAreasWayFailsTheUpdateAndHarmsNothing) {
    device.write("FlashDisk/VELD/Update", "a file");
    EXPECT_EQ(run(), UpdateFailed);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL_old/KSTRL.exe"), "application 1");
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI_old/data/bg.raw"), "picture 1");
}

// Its holes stay holes: such a file needs no more room on the flash disk than on the key.
TEST_F(HostileEntries, ASparseFileOf4GiBIsCopiedWithItsHoles) {
    constexpr off_t size = (off_t{4} << 30) + 1;
    device.write(KEY + std::string("KSTRL/sparse"), "head");
    fs::resize_file(onKey("KSTRL/sparse"), static_cast<uintmax_t>(size));
    EXPECT_EQ(run(), UpdateComplete);
    struct stat status {};
    ASSERT_EQ(::stat((device.root() / "FlashDisk/VELD/KSTRL/sparse").c_str(), &status), 0);
    EXPECT_EQ(status.st_size, size);
    EXPECT_LT(status.st_blocks, 4096);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 2");
}

}  // namespace
