// Tests that no other disk than a stick is written, whatever the command line says.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "tests/updatekey/sound_key.h"
#include "tools/host/temporary_folder.h"
#include "tools/host/volume.h"
#include "tools/updatekey/write/sticks.h"

namespace {

namespace fs = std::filesystem;

// A computer as its system describes it: one file system, mounted at a folder of the test.
struct Mount {
    const char* type;
    const char* disk;  // below /sys/devices
    const char* removable;
    std::string folder;  // below the mount
    std::string key;     // the folder that the key was read from; empty for one on another disk
    const char* problem;
};

TEST(WriteSticks, WritesOnlyToARemovableDiskWithFat32) {
    const Mount mounts[] = {
        {"vfat", "usb1/block/sdb", "0", "", "", ""},
        {"vfat", "ata1/block/sdb", "1", "", "", ""},
        {"vfat", "ata2/block/sdb", "0", "", "", "not on a removable"},
        {"exfat", "usb2/block/sdb", "1", "", "", "file system exfat"},
        {"ntfs3", "usb3/block/sdb", "1", "", "", "file system ntfs3"},
        {"ext4", "usb4/block/sdb", "1", "", "", "file system ext4"},
        {"vfat", "usb5/block/sdb", "1", "photos", "", "no stick is mounted there"},
        {"vfat", "usb6/block/sdb", "1", "", "key", "this disk also holds"},
    };
    // The stick must be on another file system than the key and the system.
    const TemporaryFolder keyFolder("/var/tmp/key");
    const TemporaryFolder computer("/dev/shm/computer");
    // In a container the memory may be too small to pass for a stick.
    if (roomOn(computer.path()).size < uint64_t{1} << 28)
        GTEST_SKIP() << "/dev/shm has less than 256 MB";
    writeSoundKey(keyFolder.path());
    struct stat status {};
    ASSERT_EQ(::stat(computer.path().c_str(), &status), 0);
    const std::string number = std::to_string(gnu_dev_major(status.st_dev)) + ":" +
                               std::to_string(gnu_dev_minor(status.st_dev));
    for (const Mount& mount : mounts) {
        const fs::path root = computer.path() / mount.disk;
        const fs::path disk = root / "sys/devices" / mount.disk;
        writeFile(root / "my stick/photos/a.jpg", "x");
        writeFile(disk / "sdb1/partition", "1");
        writeFile(disk / "removable", mount.removable);
        fs::create_directories(root / "key");
        fs::create_directories(root / "sys/dev/block");
        fs::create_symlink(disk / "sdb1", root / "sys/dev/block" / number);
        writeFile(root / "proc/self/mountinfo",
                  "36 35 " + number + " / " + (root / "my\\040stick").string() + " rw shared:1 - " +
                      mount.type + " /dev/sdb1 rw\n");
        WriteOptions options;
        options.key = keyFolder.path();
        options.source = mount.key.empty() ? keyFolder.path() : root / mount.key;
        options.sticks = {root / "my stick" / mount.folder};
        options.systemRoot = root;
        const std::string problem = writeSticks(options, {}).sticks.at(0).problem;
        EXPECT_EQ(problem.empty(), std::string(mount.problem).empty()) << problem;
        EXPECT_NE(problem.find(mount.problem), std::string::npos) << problem;
        EXPECT_EQ(fs::exists(root / "my stick/VELD/KSTRL/KSTRL.exe"), problem.empty());
    }
}

}  // namespace
