// What the file utilities report to the debugger.

#include <gtest/gtest.h>

#include "platform/posix/call_hook.h"
#include "support/file_util.h"
#include "tests/support/device_folder.h"

namespace {

using Traces = std::vector<std::string>;

TEST(FileUtilTraces, TellOfLongPathsAndFailedConversions) {
    const DeviceFolder device;
    device.write("T/file");
    std::string failing;
    Traces traces;
    setCallHook([&](const HookedCall& call) {
        const std::string name = call.name;
        if (name == "OutputDebugStringW")
            traces.push_back(call.arguments[0]);
        return name == failing ? DWORD{87} : DWORD{0};
    });
    listDirectory("/" + std::string(257, 'x') + "/", true, true);
    EXPECT_EQ(traces, Traces{"mbstowcs_s path conversion error.\n"});
    listDirectory("/" + std::string(258, 'x') + "/", true, true);
    fileTimeText("/" + std::string(259, 'x'));
    fileTimeText("/" + std::string(258, 'x'));
    EXPECT_EQ(traces.size(), std::size_t{1});

    traces.clear();
    failing = "FileTimeToLocalFileTime";
    EXPECT_EQ(listDirectory("/T/", true, true).size(), std::size_t{1});
    failing = "FileTimeToSystemTime";
    EXPECT_NE(fileTimeText("/T/file"), "");
    EXPECT_EQ(traces,
              (Traces{"FileTimeToLocalFileTime error.\n", "FileTimeToSystemTime error.\n"}));
}

}  // namespace
