// Tests the order in which the folders are swapped, which decides what a power cut leaves, and what
// the log tells of a deletion that fails.

#include "platform/posix/call_hook.h"
#include "tests/helpers/update_on_device.h"
#include "update/file_tree.h"

namespace {

using Swap = UpdateOnDevice;

TEST_F(Swap, EachFolderIsReplacedBeforeTheNextIsTouched) {
    device.write("FlashDisk/VELD/KSTRL_old/sub/f");
    std::string changes;
    setCallHook([&](const HookedCall& call) {
        const std::string name = call.name;
        if (name == "CopyFileW" || name == "RemoveDirectoryW" || name == "MoveFileW")
            changes += name + " " + call.arguments[0] +
                       (name == "MoveFileW" ? " " + call.arguments[1] : "") + "\n";
        return ERROR_SUCCESS;
    });
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(changes,
              "CopyFileW /USB HD/VELD/KSTRL/KSTRL.exe\n"
              "CopyFileW /USB HD/VELD/ORBUI/data/bg.raw\n"
              "RemoveDirectoryW /FlashDisk/VELD/KSTRL_old\\sub\\\n"
              "RemoveDirectoryW /FlashDisk/VELD/KSTRL_old\\\n"
              "MoveFileW /FlashDisk/VELD/KSTRL /FlashDisk/VELD/KSTRL_old\n"
              "MoveFileW /FlashDisk/VELD/Update\\KSTRL /FlashDisk/VELD/KSTRL\n"
              "RemoveDirectoryW /FlashDisk/VELD/ORBUI_old\\\n"
              "MoveFileW /FlashDisk/VELD/ORBUI /FlashDisk/VELD/ORBUI_old\n"
              "MoveFileW /FlashDisk/VELD/Update\\ORBUI /FlashDisk/VELD/ORBUI\n"
              "RemoveDirectoryW /FlashDisk/VELD/Update\n");
}

// The result for a folder overwrites the error of a file that could not be deleted. A folder that
// cannot be removed makes the removal of its parent fail too.
TEST(DeleteTree, LogsEachFailureAndContinues) {
    const DeviceFolder device;
    for (const char* const file : {"T/a/vanishing", "T/a/w", "T/b/f", "T/c", "U/a/f"})
        device.write(file);
    device.setReadOnly("T/c");
    Logger::instance().setPath("/log.txt");
    setCallHook([&](const HookedCall& call) -> DWORD {
        const std::string name = call.name;
        if (name == "RemoveDirectoryW" && call.arguments[0] == "/U/a\\")
            return ERROR_ACCESS_DENIED;
        const bool vanishes = name == "DeleteFileW" && call.arguments[0] == "/T/a\\vanishing";
        return vanishes && std::filesystem::remove(device.root() / "T/a/vanishing")
                   ? ERROR_FILE_NOT_FOUND
                   : ERROR_SUCCESS;
    });
    testing::internal::CaptureStderr();
    EXPECT_EQ(deleteTree("/missing/folder/"), 0);
    EXPECT_EQ(deleteTree("/U/a/f/"), 1);
    EXPECT_EQ(deleteTree("/T/"), 0);
    EXPECT_EQ(deleteTree("/U/"), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Error 123 ::RemoveDirectory(/U/a/f/)\n"
              "*** Read only flag set on: /T/c\n"
              "Error 2 deleting file: /T/a\\vanishing\n"
              "Error 5 ::RemoveDirectory(/U/a\\)\n"
              "Error 145 ::RemoveDirectory(/U/)\n");
    EXPECT_FALSE(device.exists("T"));
}

}  // namespace
