// Tests that an update makes its system calls in an order that survives a power cut, by listing all
// calls of one update.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "support/logger.h"
#include "tests/helpers/device_folder.h"
#include "update/file_tree.h"
#include "update/updater.h"

namespace {

// Directory searches and log calls are left out.
std::vector<std::string> callsOf(const std::function<void()>& operation) {
    std::vector<std::string> calls;
    setCallHook([&](const HookedCall& call) {
        const std::string name = call.name;
        if (name == "FindNextFileW" || name == "FindClose" || name == "OutputDebugStringW" ||
            name.rfind("FileTimeTo", 0) == 0)
            return ERROR_SUCCESS;
        calls.push_back(name);
        for (const std::string& argument : call.arguments)
            calls.back() += " " + argument;
        return ERROR_SUCCESS;
    });
    operation();
    setCallHook({});
    return calls;
}

TEST(CallOrder, OfAnUpdateSurvivesAPowerCut) {
    const DeviceFolder device;
    device.write("FlashDisk/VELD/KSTRL/KSTRL.exe");
    device.write("FlashDisk/VELD/KSTRL_old/sub/f");
    device.write("FlashDisk/VELD/KSTRL_old/e");
    device.write("FlashDisk/VELD/ORBUI/data/bg.raw");
    device.write("USB HD/VELD/KSTRL/KSTRL.exe");
    device.write("USB HD/VELD/ORBUI/data/bg.raw");
    device.write("USB HD/VELD/ORBUI/data/lang/en.txt");
    device.write("USB HD/VELD/kstrXReleaseNotes.txt", "KSTRL Release 2\n");
    device.setReadOnly("USB HD/VELD/ORBUI/data/bg.raw");
    device.setReadOnly("FlashDisk/VELD/KSTRL_old/e");
    Logger::instance().setPath("/FlashDisk/VELD/log.txt");
    Updater updater;
    using Calls = std::vector<std::string>;

    EXPECT_EQ(callsOf([&] { updater.pollMedia(); }),
              (Calls{"FindFirstFileW /USB HD/VELD/*", "FindFirstFileW /USB HD/VELD/ORBUI/data/*",
                     "FindFirstFileW /USB HD/VELD/KSTRL/*",
                     "_wfopen /USB HD/VELD/kstrXReleaseNotes.txt rb",
                     "_wfopen /USB HD/VELD/kstrXReleaseNotes.txt rb"}));
    EXPECT_EQ(
        callsOf([&] { updater.startUpdate(); }),
        (Calls{"FindFirstFileW /USB HD/VELD/KSTRL/*", "FindFirstFileW /USB HD/VELD/ORBUI/data/*",
               "FindFirstFileW /USB HD/VELD/ORBUI/data/*",
               "FindFirstFileW /USB HD/VELD/ORBUI/data/lang\\*",
               "CreateDirectoryW /FlashDisk/VELD/", "CreateDirectoryW /FlashDisk/VELD/Update",
               "CreateDirectoryW /FlashDisk/VELD/Update\\KSTRL/",
               "CreateDirectoryW /FlashDisk/VELD/Update\\ORBUI/",
               "CreateDirectoryW /FlashDisk/VELD/Update\\ORBUI/data/",
               "CreateDirectoryW /FlashDisk/VELD/Update\\ORBUI/data/lang\\"}));

    const std::string key = "/USB HD/VELD/";
    const std::string staging = "/FlashDisk/VELD/Update\\";
    const auto copy = [&](const std::string& file) {
        return Calls{"CopyFileW " + key + file + " " + staging + file + " 0",
                     "GetFileAttributesW " + staging + file};
    };
    EXPECT_EQ(callsOf([&] { updater.step(); }), copy("KSTRL/KSTRL.exe"));
    Calls readOnlyCopy = copy("ORBUI/data/bg.raw");
    readOnlyCopy.push_back("SetFileAttributesW " + staging + "ORBUI/data/bg.raw 32");
    EXPECT_EQ(callsOf([&] { updater.step(); }), readOnlyCopy);
    EXPECT_EQ(callsOf([&] { updater.step(); }), copy("ORBUI/data/lang\\en.txt"));

    const std::string old = "/FlashDisk/VELD/KSTRL_old\\";
    EXPECT_EQ(callsOf([&] { updater.step(); }),
              (Calls{"FindFirstFileW " + old + "*",
                     "FindFirstFileW " + old + "*",
                     "GetFileAttributesW " + old + "e",
                     "SetFileAttributesW " + old + "e 32",
                     "DeleteFileW " + old + "e",
                     "FindFirstFileW " + old + "sub\\*",
                     "FindFirstFileW " + old + "sub\\*",
                     "GetFileAttributesW " + old + "sub\\f",
                     "DeleteFileW " + old + "sub\\f",
                     "RemoveDirectoryW " + old + "sub\\",
                     "RemoveDirectoryW " + old,
                     "MoveFileW /FlashDisk/VELD/KSTRL /FlashDisk/VELD/KSTRL_old",
                     "MoveFileW /FlashDisk/VELD/Update\\KSTRL /FlashDisk/VELD/KSTRL",
                     "FindFirstFileW /FlashDisk/VELD/ORBUI_old\\*",
                     "FindFirstFileW /FlashDisk/VELD/ORBUI_old\\*",
                     "RemoveDirectoryW /FlashDisk/VELD/ORBUI_old\\",
                     "MoveFileW /FlashDisk/VELD/ORBUI /FlashDisk/VELD/ORBUI_old",
                     "MoveFileW /FlashDisk/VELD/Update\\ORBUI /FlashDisk/VELD/ORBUI",
                     "RemoveDirectoryW /FlashDisk/VELD/Update",
                     "GetLocalTime"}));
    EXPECT_EQ(updater.getState(), UpdateComplete);
    EXPECT_TRUE(callsOf([&] { updater.step(); }).empty());
}

// The result for a folder overwrites the error of a file that could not be deleted. A folder that
// cannot be removed makes the removal of its parent fail too.
TEST(DeleteTree, LogsEachFailureAndContinues) {
    const DeviceFolder device;
    for (const char* const file : {"T/a/vanishing", "T/b/f", "U/a/f"})
        device.write(file);
    device.setReadOnly("T/b/f");
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
    EXPECT_EQ(deleteTree("/T/"), 0);
    EXPECT_EQ(deleteTree("/U/"), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Error 2 deleting file: /T/a\\vanishing\n"
              "*** Read only flag set on: /T/b\\f\n"
              "Error 5 ::RemoveDirectory(/U/a\\)\n"
              "Error 145 ::RemoveDirectory(/U/)\n");
    EXPECT_FALSE(device.exists("T"));
    EXPECT_NE(device.read("log.txt").find("*** ERROR *** Error 2 deleting"), std::string::npos);
}

}  // namespace
