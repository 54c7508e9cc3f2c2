// Tests that scripts can rely on the program: its exit codes.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "tests/helpers/child_process.h"
#include "tests/helpers/device_folder.h"
#include "tests/updatekey/sound_key.h"
#include "tools/host/temporary_folder.h"
#include "tools/host/volume.h"
#include "tools/updatekey/write/sticks.h"

namespace {

namespace fs = std::filesystem;

class Program : public ::testing::Test {
  protected:
    Program() : key(work.root() / "key") { writeSoundKey(key); }

    // Runs the program and returns its exit code.
    int run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), UPDATEKEY_PROGRAM);
        ChildProcess process(arguments);
        const std::optional<int> code = process.waitForEnd();
        output = process.output();
        return code.value_or(-1);
    }

    DeviceFolder work;
    const std::string key;
    std::string output;
};

TEST_F(Program, ReturnsTheRightExitCode) {
    const std::string image = work.root() / "key.img";
    const std::string good = work.root() / "stick";
    const std::string any = "--not-a-stick";
    work.write("stick/VELD.unfinished/KSTRL/KSTRL.exe", "of a run that was broken off");
    work.write("stick/mine.txt", "stays");
    work.write("stick/VELD/surveys/field1.gpr", "stays too");
    const std::pair<std::vector<std::string>, int> runs[] = {
        {{"check", key}, 0},
        {{"info", key}, 0},
        {{"--help"}, 0},
        {{}, 2},
        {{"check"}, 2},
        {{"check", "/nowhere/at/all"}, 2},
        {{"check", "--languages", "en,xx", key}, 2},
        {{"check", "--flash-size", "1kb", key}, 1},
        {{"check", "--flash-size=-1", key}, 2},
        {{"check", "--flash-size", "1kb", "--accept", "flash-too-small", key}, 0},
        {{"bogus"}, 2},
        {{"image", key, image}, 0},
        {{"image", key, image}, 2},  // the image exists
        {{"image", key, image + "2"}, 0},
        {{"check", image}, 0},
        {{"check", key + "/VELD/KSTRL/KSTRL.exe"}, 2},       // not an image
        {{"write", key, good}, 1},                           // no stick
        {{"write", any, key, homeFolder()}, 1},              // never
        {{"write", any, key, "/"}, 2},                       // it holds the key
        {{"write", any, key, good, good + "/../stick"}, 2},  // twice the same
        {{"write", any, "--replace", key, key}, 2},          // onto itself
        {{"write", any, key, good}, 0},
        {{"write", any, key, good}, 1},  // it already contains an update
        {{"write", any, "--replace", key, good}, 0},
        {{"sticks"}, 0},
        {{"diff", key, good}, 0},
        {{"diff", key, work.root()}, 2},
    };
    for (const auto& [arguments, code] : runs)
        EXPECT_EQ(run(arguments), code) << ::testing::PrintToString(arguments);
    EXPECT_EQ(work.read("key.img"), work.read("key.img2"));
    Tree expected = work.tree("key/VELD");
    expected.insert({{"surveys/", ""}, {"surveys/field1.gpr", "stays too"}});
    EXPECT_EQ(work.tree("stick/VELD"), expected);
    EXPECT_EQ(work.read("stick/mine.txt"), "stays");
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(output, "updatekey " UPDATEKEY_VERSION "\n");
}

// A computer as its system describes it: one file system, mounted at a folder of the test.
struct Mount {
    const char* type;
    const char* disk;  // below /sys/devices
    const char* removable;
    std::string folder;  // below the mount
    const char* problem;
};

TEST_F(Program, WritesOnlyToARemovableDiskWithFat32) {
    const Mount mounts[] = {
        {"vfat", "usb1/block/sdb", "0", "", ""},
        {"vfat", "ata1/block/sdb", "1", "", ""},
        {"vfat", "ata2/block/sdb", "0", "", "not on a removable"},
        {"exfat", "usb2/block/sdb", "1", "", "file system exfat"},
        {"vfat", "usb3/block/sdb", "1", "photos", "no stick is mounted there"},
    };
    // The stick must be on another file system than the key and the system.
    const TemporaryFolder keyFolder("/var/tmp/key");
    const TemporaryFolder computer("/dev/shm/computer");
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
        fs::create_directories(root / "sys/dev/block");
        fs::create_symlink(disk / "sdb1", root / "sys/dev/block" / number);
        writeFile(root / "proc/self/mountinfo",
                  "36 35 " + number + " / " + (root / "my\\040stick").string() + " rw shared:1 - " +
                      mount.type + " /dev/sdb1 rw\n");
        WriteOptions options;
        options.key = options.source = keyFolder.path();
        options.sticks = {root / "my stick" / mount.folder};
        options.systemRoot = root;
        const WriteReport report = writeSticks(options);
        const std::string& problem = report.sticks.at(0).problem;
        EXPECT_EQ(problem.empty(), std::string(mount.problem).empty()) << problem;
        EXPECT_NE(problem.find(mount.problem), std::string::npos) << problem;
        EXPECT_EQ(fs::exists(root / "my stick/VELD/KSTRL/KSTRL.exe"), problem.empty());
    }
}

}  // namespace
