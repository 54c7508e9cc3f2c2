// Tests that a failing process call neither hangs the start-up nor leaks a handle.

#include "app/process_control.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "tests/helpers/device_folder.h"

namespace {

// Each call fails in turn: nothing is reported, nothing hangs, and every handle is closed.
TEST(ProcessControl, AFailingCallNeitherHangsNorLeaksAHandle) {
    const DeviceFolder device;
    const char* const failing[] = {"CreateToolhelp32Snapshot", "Process32First", "Process32Next"};
    for (const char* const name : failing) {
        SCOPED_TRACE(name);
        std::vector<std::string> calls;
        setCallHook([&](const HookedCall& call) {
            calls.emplace_back(call.name);
            return std::string(call.name) == name ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
        });
        terminateProcessByName("KSTRL.exe");
        EXPECT_EQ(calls.front(), "CreateToolhelp32Snapshot");
        EXPECT_EQ(calls.back(), "CloseHandle");
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "TerminateProcess"), 0);
    }
}

}  // namespace
