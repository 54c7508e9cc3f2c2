// Tests that the installation survives real disk faults: full, read-only and unplugged disks, and a
// log that cannot be written. Mounting needs root.

#include <sched.h>
#include <sys/mount.h>

#include <fstream>
#include "platform/posix/call_hook.h"

#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

class RealFault : public UpdateOnDevice {
  protected:
    void TearDown() override {
        if (mounted)
            ::umount2(flashDisk().c_str(), MNT_DETACH);
    }

    std::string flashDisk() const { return (device.root() / "FlashDisk").string(); }

    // Mounts a small in-memory disk with the installation as the flash disk, visible to this
    // process only.
    bool mountFlashDisk(const char* size) {
        Logger::instance().setPath("/log.txt");
        const std::string options = std::string("size=") + size;
        mounted = ::unshare(CLONE_NEWNS) == 0 &&
                  ::mount("", "/", "", MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  ::mount("none", flashDisk().c_str(), "tmpfs", 0, options.c_str()) == 0;
        if (mounted)
            UpdateOnDevice::SetUp();
        return mounted;
    }

    bool mounted = false;
};

#define MOUNT_OR_SKIP(size)    \
    if (!mountFlashDisk(size)) \
    GTEST_SKIP() << "this system does not permit mounting: the disk's faults are not tested"

// A file that does not fit is skipped without an error; the previous installation remains as the
// backup.
TEST_F(RealFault, AFullFlashDiskKeepsTheInstallation) {
    MOUNT_OR_SKIP("256k");
    device.write("USB HD/VELD/KSTRL/large.dll", std::string(1 << 20, 'x'));
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL_old/KSTRL.exe"), "application 1");
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI_old/data/bg.raw"), "picture 1");
    EXPECT_FALSE(device.exists("FlashDisk/VELD/KSTRL/large.dll"));
    EXPECT_NE(log().find("Error 2 ::SetFileAttributes"), std::string::npos);

    device.write("USB HD/VELD/KSTRL/large.dll", "now it fits");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/large.dll"), "now it fits");
}

TEST_F(RealFault, AReadOnlyFlashDiskFailsTheUpdate) {
    MOUNT_OR_SKIP("1m");
    Logger::instance().setPath("/log.txt");
    const Tree before = device.tree("FlashDisk");
    ASSERT_EQ(::mount("none", flashDisk().c_str(), "", MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(run(), UpdateFailed);
    EXPECT_EQ(device.tree("FlashDisk"), before);
    const std::string told = device.read("log.txt");
    EXPECT_NE(told.find("Error 19 ::MoveFile: /FlashDisk/VELD/KSTRL "), std::string::npos) << told;
    EXPECT_NE(told.find("*** ERROR *** Update failed.\n"), std::string::npos);
}

// The files not copied yet are missing from the new folders; the old folders are the backup.
TEST_F(RealFault, AKeyPulledOutWhileCopyingLeavesTheBackup) {
    int copies = 0;
    setCallHook([&](const HookedCall& call) {
        if (std::string(call.name) == "CopyFileW" && ++copies == 2)
            fs::rename(device.root() / "USB HD", device.root() / "pulled out");
        return ERROR_SUCCESS;
    });
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 2");
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"), (Tree{{"data/", ""}}));
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI_old/data/bg.raw"), "picture 1");

    setCallHook({});
    fs::rename(device.root() / "pulled out", device.root() / "USB HD");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw"), "picture 2");
}

}  // namespace
