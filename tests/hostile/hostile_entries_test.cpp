// Entries of a key that are not what is expected at their place.

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

class HostileEntries : public UpdateOnDevice {
  protected:
    fs::path onKey(const std::string& name) const { return device.root() / (KEY + name); }

    void expectOnlyTheUsualFiles() const {
        EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
        EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"),
                  (Tree{{"data/", ""}, {"data/bg.raw", "picture 2"}}));
    }
};

// Opening a pipe would wait for its other end, and the frame loop with it.
TEST_F(HostileEntries, PipesAndSocketsAreNotListed) {
    ASSERT_EQ(::mkfifo(onKey("KSTRL/pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(onKey("kstrXReleaseNotes.txt").c_str(), 0600), 0);
    const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = onKey("ORBUI/data/s").string();
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size());
    ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(run(), UpdateComplete);
    ::close(server);
    expectOnlyTheUsualFiles();
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

TEST_F(HostileEntries, AFileAtAFoldersPlaceIsNoKey) {
    fs::remove_all(onKey("ORBUI"));
    device.write(KEY + std::string("ORBUI"), "a file");
    Updater updater;
    updater.pollMedia();
    EXPECT_FALSE(updater.isMediaReady());
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
