// Tests that the installation survives real disk faults: full, read-only and unplugged disks, and a
// log that cannot be written. Mounting needs root.

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/descriptor.h"
#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

class FailingDisk : public UpdateOnDevice {
  protected:
    void TearDown() override {
        for (const std::string& folder : {flashDisk(), below()})
            while (::umount2(folder.c_str(), MNT_DETACH) == 0) {
            }
    }

    std::string flashDisk() const { return (device.root() / "FlashDisk").string(); }
    std::string below() const { return (device.root() / "below").string(); }

    // Mounts a small in-memory disk with the installation as the flash disk, visible to this
    // process only.
    bool mountFlashDisk(const char* size) {
        Logger::instance().setPath("/log.txt");
        const std::string options = std::string("size=") + size;
        const bool mounted = ::unshare(CLONE_NEWNS) == 0 &&
                             ::mount("", "/", "", MS_REC | MS_PRIVATE, nullptr) == 0 &&
                             ::mount("none", flashDisk().c_str(), "tmpfs", 0, options.c_str()) == 0;
        if (mounted)
            UpdateOnDevice::SetUp();
        return mounted;
    }

    static bool runs(const std::string& commands) { return std::system(commands.c_str()) == 0; }

    // Makes the flash disk an ext4 which has room, but can write only so many more KiB of contents:
    // the file of the disk's image has holes, and what that is on is full.
    bool mountFailingFlashDisk(const char* kilobytes) {
        fs::create_directory(below());
        const std::string inside = "cd " + below() + " && ";
        if (!mountFlashDisk("1m") ||
            !runs("mount -t tmpfs -o size=32m none " + below() + " && " + inside +
                  "truncate -s 24m image && "
                  "/sbin/mke2fs -q -t ext4 -b 4096 -E lazy_itable_init=0,nodiscard image && "
                  "fallocate -l 24m image && mount -o loop image " +
                  flashDisk()))
            return false;
        UpdateOnDevice::SetUp();
        device.makeFolder("FlashDisk/VELD/Update/KSTRL");
        device.makeFolder("FlashDisk/VELD/Update/ORBUI/data");
        return runs("sync && /sbin/fstrim " + flashDisk() + " && " + inside +
                    "fallocate -l $(($(df --output=avail -k . | tail -n 1) - " + kilobytes +
                    "))k full");
    }
};

#define MOUNT_OR_SKIP(mounted) \
    if (!mounted)              \
    GTEST_SKIP() << "this system does not permit mounting: the disk's faults are not tested"

// Before each move another program flushes the disk too, and is told of the error first. The last
// disk cannot even write the log, whose lines are then in memory only.
TEST_F(FailingDisk, ADiskThatCannotWriteInstallsNothing) {
    for (const char* const kilobytes : {"16", "0"}) {
        MOUNT_OR_SKIP(mountFailingFlashDisk(kilobytes));
        for (const char* const file : {"KSTRL/a.dll", "ORBUI/data/b.raw"})
            device.write(KEY + std::string(file), std::string(1 << 20, 'x'));
        setCallHook([&](const HookedCall& call) {
            const host::Descriptor other(::open(flashDisk().c_str(), O_RDONLY | O_CLOEXEC));
            if (std::string(call.name) == "MoveFileW")
                ::syncfs(other.number());
            return ERROR_SUCCESS;
        });
        EXPECT_EQ(run(), UpdateFailed);
        setCallHook({});
        EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 1");
        EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw"), "picture 1");
        const std::string told = log();
        EXPECT_EQ(told.rfind("Opening log at ", 0), std::size_t{0}) << told;
        EXPECT_EQ(told.find("Update failed.\n\n"), told.size() - 16) << told;
        Logger::instance().setPath("/log.txt");
        TearDown();
    }
}

TEST_F(FailingDisk, WhatIsMountedIntoOrOnTheBackupIsNotDeleted) {
    MOUNT_OR_SKIP(mountFlashDisk("1m"));
    for (const std::string folder :
         {"KSTRL_old", "KSTRL_old/mounted", "KSTRL_old/a\\b/mounted", "ORBUI_old"}) {
        SCOPED_TRACE(folder);
        UpdateOnDevice::SetUp();
        fs::create_directories(flashDisk() + "/VELD/" + folder);
        device.write("FlashDisk/VELD/Projects/deeper/survey.dzt", "a day in the field");
        const std::string at = flashDisk() + "/VELD/" + folder;
        ASSERT_EQ(
            ::mount((flashDisk() + "/VELD/Projects").c_str(), at.c_str(), "", MS_BIND, nullptr), 0);
        EXPECT_EQ(run(), UpdateFailed);
        EXPECT_EQ(device.read("FlashDisk/VELD/Projects/deeper/survey.dzt"), "a day in the field");
        const std::string name = folder.substr(0, 5);
        EXPECT_FALSE(device.tree("FlashDisk/VELD/" + name).empty());
        EXPECT_NE(log().find("Error 145 ::RemoveDirectory(/FlashDisk/VELD/" + name + "_old\\)"),
                  std::string::npos);
        ASSERT_EQ(::umount(at.c_str()), 0);
        fs::remove_all(flashDisk() + "/VELD/" + folder.substr(0, 9));
    }
}

// Enough failed copies to fill more than the log's first block, on a disk that somebody else fills.
TEST_F(FailingDisk, TheLogHasRoomOnAFullFlashDisk) {
    MOUNT_OR_SKIP(mountFlashDisk("256k"));
    constexpr int FILES = 200;
    for (int i = 0; i < FILES; ++i)
        device.write(KEY + ("KSTRL/" + std::to_string(i)), std::string(100, 'x'));
    setCallHook([&](const HookedCall& call) {
        if (std::string(call.name) == "CopyFileW")
            std::ofstream(flashDisk() + "/full", std::ios::app) << std::string(1 << 18, 'x');
        return ERROR_SUCCESS;
    });
    EXPECT_EQ(run(), UpdateComplete);
    std::size_t errors = 0;
    for (std::size_t at = 0; (at = log().find("Error 2 ::", at)) != std::string::npos; ++at)
        ++errors;
    EXPECT_GE(errors, std::size_t{FILES});
    EXPECT_NE(log().find("Update succeeded at "), std::string::npos);
}

// The previous installation remains as the backup.
TEST_F(FailingDisk, AFullFlashDiskKeepsTheInstallation) {
    MOUNT_OR_SKIP(mountFlashDisk("256k"));
    device.write("USB HD/VELD/KSTRL/large.dll", std::string(1 << 20, 'x'));
    expectUpdate("Error 2 ::SetFileAttributes; Update succeeded", UPDATED);
}

TEST_F(FailingDisk, AReadOnlyFlashDiskFailsTheUpdate) {
    MOUNT_OR_SKIP(mountFlashDisk("1m"));
    Logger::instance().setPath("/log.txt");
    ASSERT_EQ(::mount("none", flashDisk().c_str(), "", MS_REMOUNT | MS_RDONLY, nullptr), 0);
    expectUpdate(
        "Error 3 ::SetFileAttributes; Error 3 ::SetFileAttributes; "
        "Error 19 ::MoveFile: KSTRL -> KSTRL_old :; Error 3 ::MoveFile: Update\\KSTRL -> KSTRL :; "
        "Error 19 ::MoveFile: ORBUI -> ORBUI_old :; Error 3 ::MoveFile: Update\\ORBUI -> ORBUI :; "
        "Error 2 ::RemoveDirectory(Update); Update failed.; ",
        " KSTRL/KSTRL.exe=1 ORBUI/data/bg.raw=1");
}

// The files not copied yet are missing from the new folders; the old folders are the backup.
TEST_F(FailingDisk, AKeyPulledOutWhileCopyingLeavesTheBackup) {
    device.write(KEY + std::string("ORBUI/data/last.raw"));
    int copies = 0;
    setCallHook([&](const HookedCall& call) {
        if (std::string(call.name) == "CopyFileW" && ++copies == 2)
            fs::rename(device.root() / "USB HD", device.root() / "pulled out");
        return ERROR_SUCCESS;
    });
    expectUpdate("Error 2 ::SetFileAttributes; Error 2 ::SetFileAttributes; Update succeeded",
                 " KSTRL/KSTRL.exe=2 KSTRL_old/KSTRL.exe=1 ORBUI/data/ ORBUI_old/data/bg.raw=1");
}

}  // namespace
