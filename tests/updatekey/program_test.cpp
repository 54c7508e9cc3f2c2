// Tests that scripts can rely on the program: its exit codes.

#include <gtest/gtest.h>

#include "tests/helpers/child_process.h"
#include "tests/helpers/device_folder.h"
#include "tests/updatekey/sound_key.h"

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
    work.write("stick/VELD.unfinished/KSTRL/KSTRL.exe", "of a run that was broken off");
    work.write("stick/mine.txt", "stays");
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
        {{"check", key + "/VELD/KSTRL/KSTRL.exe"}, 2},  // not an image
        {{"write", key, good}, 0},
        {{"write", key, good}, 1},  // the drive already holds an update
        {{"write", "--replace", key, good}, 0},
        {{"diff", key, good}, 0},
        {{"diff", key, work.root()}, 2},
    };
    for (const auto& [arguments, code] : runs)
        EXPECT_EQ(run(arguments), code) << ::testing::PrintToString(arguments);
    EXPECT_EQ(work.read("key.img"), work.read("key.img2"));
    EXPECT_EQ(work.tree("stick/VELD"), work.tree("key/VELD"));
    EXPECT_EQ(work.read("stick/mine.txt"), "stays");
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(output, "updatekey " UPDATEKEY_VERSION "\n");
}

}  // namespace
