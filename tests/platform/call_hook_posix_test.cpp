// The call hook: what it sees, and the failures that it injects.

#include "platform/posix/call_hook.h"

#include <gtest/gtest.h>

#include "tests/support/device_folder.h"

namespace {

TEST(CallHook, SeesNamesAndArguments) {
    const DeviceFolder device;
    std::vector<std::string> seen;
    setCallHook([&](const HookedCall& call) {
        std::string line = call.name;
        for (const std::string& argument : call.arguments)
            line += " " + argument;
        seen.push_back(line);
        return DWORD{0};
    });
    CopyFileW(u"/a\\\xE9", u"/b", TRUE);
    SetFileAttributesW(u"/a", 0xFFFFFFFE);
    Sleep(0);
    SYSTEMTIME time{};
    GetLocalTime(&time);
    setCallHook({});
    CreateDirectoryW(u"/d", nullptr);
    EXPECT_EQ(seen, (std::vector<std::string>{"CopyFileW /a\\\xC3\xA9 /b 1",
                                              "SetFileAttributesW /a 4294967294", "Sleep 0",
                                              "GetLocalTime"}));
}

TEST(CallHook, FailsACallWithoutMakingIt) {
    const DeviceFolder device;
    device.write("f", "1");
    setCallHook([](const HookedCall&) { return DWORD{1117}; });
    EXPECT_FALSE(DeleteFileW(u"/f"));
    EXPECT_EQ(GetLastError(), DWORD{1117});
    EXPECT_EQ(_wfopen(u"/f", u"w"), nullptr);
    WIN32_FIND_DATAW found{};
    EXPECT_EQ(FindFirstFileW(u"/f", &found), INVALID_HANDLE_VALUE);
    HKEY key{};
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE", 0, KEY_READ, &key), 1117);
    EXPECT_EQ(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0), INVALID_HANDLE_VALUE);
    TIME_ZONE_INFORMATION zone{};
    EXPECT_EQ(GetTimeZoneInformation(&zone), TIME_ZONE_ID_INVALID);
    setCallHook({});
    EXPECT_EQ(device.tree(), (Tree{{"f", "1"}}));
}

TEST(CallHook, DebuggerOutputIsOneLineAMessage) {
    ::testing::internal::CaptureStderr();
    OutputDebugStringW(u"two\nlines \xE9 %s\n");
    OutputDebugStringW(u"");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "two lines \xC3\xA9 %s\n\n");
}

}  // namespace
