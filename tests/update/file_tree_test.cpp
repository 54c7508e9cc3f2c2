#include "update/file_tree.h"

#include <gtest/gtest.h>

#include "platform/win32.h"
#include "support/logger.h"
#include "tests/support/device_folder.h"

namespace {

class FileTree : public ::testing::Test {
  protected:
    void SetUp() override {
        device.makeFolder("FlashDisk/VELD");
        Logger::instance().setPath("/FlashDisk/VELD/log.txt");
    }

    // The log behind its first line.
    std::string logged() const {
        const std::string text = device.read("FlashDisk/VELD/log.txt");
        return text.substr(text.find('\n') + 1);
    }

    DeviceFolder device;
};

TEST_F(FileTree, DeletesEverythingReadOnlyFilesToo) {
    device.write("FlashDisk/VELD/old/a");
    device.write("FlashDisk/VELD/old/sub/deep/b");
    device.makeFolder("FlashDisk/VELD/old/empty");
    device.setReadOnly("FlashDisk/VELD/old/a");
    device.setReadOnly("FlashDisk/VELD/old/sub/deep/b");
    device.write("FlashDisk/VELD/keep");

    EXPECT_EQ(deleteTree("/FlashDisk/VELD/old\\"), 0);

    EXPECT_FALSE(device.exists("FlashDisk/VELD/old"));
    EXPECT_TRUE(device.exists("FlashDisk/VELD/keep"));
    EXPECT_EQ(logged(), "");
}

TEST_F(FileTree, AnAbsentFolderIsNoError) {
    EXPECT_EQ(deleteTree("/FlashDisk/VELD/absent\\"), 0);
    EXPECT_EQ(deleteTree("/FlashDisk/VELD/absent\\deeper\\"), 0);
    EXPECT_EQ(logged(), "");
}

TEST_F(FileTree, ClearsTheFlagOfOneFileOnly) {
    device.write("FlashDisk/VELD/a");
    device.write("FlashDisk/VELD/b");
    device.setReadOnly("FlashDisk/VELD/a");
    device.setReadOnly("FlashDisk/VELD/b");

    clearReadOnly("/FlashDisk/VELD\\a");

    EXPECT_EQ(GetFileAttributesW(TEXT("/FlashDisk/VELD/a")) & FILE_ATTRIBUTE_READONLY, 0U);
    EXPECT_EQ(GetFileAttributesW(TEXT("/FlashDisk/VELD/b")) & FILE_ATTRIBUTE_READONLY, 1U);
    EXPECT_EQ(logged(), "");
}

TEST_F(FileTree, AMissingFileIsTakenForReadOnlyAndTheFailureLogged) {
    clearReadOnly("/FlashDisk/VELD/absent");
    EXPECT_NE(logged().find("    *** ERROR *** Error 2 ::SetFileAttributes\n"), std::string::npos);
}

}  // namespace
