// The call hook's failures, by each kind of result, and what is meant for the debugger.

#include "platform/posix/call_hook.h"

#include <gtest/gtest.h>

#include "tests/support/device_folder.h"

namespace {

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
