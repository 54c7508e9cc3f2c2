// Tests what a call that fails leaves, and what the log tells of it.

#include <algorithm>

#include "platform/posix/call_hook.h"
#include "tests/helpers/update_on_device.h"

namespace {

using FailedCall = UpdateOnDevice;

// The result for a folder overwrites that of the folder before, in a backup and in the update.
TEST_F(FailedCall, IsLoggedAndTheUpdateGoesOn) {
    struct Refused {
        std::string call;
        std::string says;
        std::string leaves;
    };
    const std::string end = "Error 145 ::RemoveDirectory(Update); Update failed.; ";
    const Refused cases[] = {
        {"DeleteFileW /FlashDisk/VELD/ORBUI_old\\a\\f",
         "Error 5 deleting file: ORBUI_old\\a\\f; Update succeeded", UPDATED},
        {"DeleteFileW /FlashDisk/VELD/ORBUI_old\\b\\f",
         "Error 5 deleting file: ORBUI_old\\b\\f; Update failed.; ", UPDATED},
        {"SetFileAttributesW /FlashDisk/VELD/KSTRL_old\\f",
         "Error 5 ::SetFileAttributes; Error 5 deleting file: KSTRL_old\\f; "
         "Error 145 ::RemoveDirectory(KSTRL_old\\); Error 183 ::MoveFile: KSTRL -> KSTRL_old :; "
         "Error 183 ::MoveFile: Update\\KSTRL -> KSTRL :; " +
             end,
         " KSTRL/KSTRL.exe=1 KSTRL_old/f=0 ORBUI/data/bg.raw=2 ORBUI_old/data/bg.raw=1 "
         "Update/KSTRL/KSTRL.exe=2"},
        {"RemoveDirectoryW /FlashDisk/VELD/ORBUI_old\\",
         "Error 5 ::RemoveDirectory(ORBUI_old\\); Update failed.; ", UPDATED},
        {"MoveFileW /FlashDisk/VELD/Update\\KSTRL",
         "Error 5 ::MoveFile: Update\\KSTRL -> KSTRL :; " + end,
         " KSTRL_old/KSTRL.exe=1 ORBUI/data/bg.raw=2 ORBUI_old/data/bg.raw=1 "
         "Update/KSTRL/KSTRL.exe=2"},
    };
    for (const Refused& test : cases) {
        std::filesystem::remove_all(device.root() / "FlashDisk");
        SetUp();
        for (const char* const file : {"KSTRL_old/f", "ORBUI_old/a/f", "ORBUI_old/b/f"})
            device.write(std::string("FlashDisk/VELD/") + file, "0");
        device.setReadOnly("FlashDisk/VELD/KSTRL_old/f");
        setCallHook([&](const HookedCall& call) -> DWORD {
            std::string path = call.arguments.empty() ? "" : call.arguments[0];
            if (call.name + (" " + path) != test.call)
                return ERROR_SUCCESS;
            std::replace(path.begin(), path.end(), '\\', '/');
            // Another program has just deleted it.
            if (path.find("ORBUI_old") != std::string::npos)
                std::filesystem::remove(device.root().string() + path);
            return ERROR_ACCESS_DENIED;
        });
        expectUpdate(test.says, test.leaves);
        setCallHook({});
    }
}

}  // namespace
