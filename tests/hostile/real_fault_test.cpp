// Whether the installation survives what no hook feigns: full, read-only and pulled-out disks, and
// a log that cannot be written. Mounting needs root.

#include <sched.h>
#include <sys/mount.h>

#include "platform/posix/call_hook.h"
#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

class RealFault : public UpdateOnDevice {
  protected:
    void TearDown() override {
        if (mounted_)
            ::umount2(flashDisk().c_str(), MNT_DETACH);
    }

    std::string flashDisk() const { return (device.root() / "FlashDisk").string(); }

    // Puts a small disk in memory at the flash disk's place, with the installation on it; only this
    // process sees it.
    bool mountFlashDisk(const char* size) {
        Logger::instance().setPath("/log.txt");
        const std::string options = std::string("size=") + size;
        mounted_ = ::unshare(CLONE_NEWNS) == 0 &&
                   ::mount("", "/", "", MS_REC | MS_PRIVATE, nullptr) == 0 &&
                   ::mount("none", flashDisk().c_str(), "tmpfs", 0, options.c_str()) == 0;
        if (mounted_)
            UpdateOnDevice::SetUp();
        return mounted_;
    }

    bool mounted_ = false;
};

#define MOUNT_OR_SKIP(size)    \
    if (!mountFlashDisk(size)) \
    GTEST_SKIP() << "mounting is refused here: the disk's faults are not tested"

// A file for which there is no room is left out unnoticed; what was installed is the backup then.
TEST_F(RealFault, AFullFlashDiskKeepsWhatWasInstalled) {
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

TEST_F(RealFault, AReadOnlyFlashDiskIsLeftAsItIs) {
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

// The files that are left to copy are missing from the new folders: the old ones are the backup.
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

TEST_F(RealFault, ALogThatCannotBeOpenedDoesNotStopTheUpdate) {
    device.makeFolder("FlashDisk/VELD/log");
    Logger::instance().setPath("/FlashDisk/VELD/log");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 2");
}

}  // namespace
