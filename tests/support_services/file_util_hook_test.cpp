// What the file utilities report to the debugger, and the searches that they close.

#include <gtest/gtest.h>

#include "platform/posix/call_hook.h"
#include "support/file_util.h"
#include "tests/support/device_folder.h"

namespace {

class FileUtilCalls : public ::testing::Test {
  protected:
    void SetUp() override {
        device.write("T/file");
        setCallHook([this](const HookedCall& call) {
            const std::string name = call.name;
            if (name == "OutputDebugStringW")
                traces.push_back(call.arguments[0]);
            open += name == "FindFirstFileW" ? 1 : name == "FindClose" ? -1 : 0;
            return name == failing ? DWORD{87} : DWORD{0};
        });
    }

    DeviceFolder device;
    std::string failing;
    std::vector<std::string> traces;
    int open = 0;
};

using Traces = std::vector<std::string>;

TEST_F(FileUtilCalls, SearchesAreClosed) {
    EXPECT_EQ(listDirectory("/T/", true, true).size(), std::size_t{1});
    EXPECT_NE(fileTimeText("/T/file"), "");
    EXPECT_EQ(open, 0);
    EXPECT_TRUE(traces.empty());
}

TEST_F(FileUtilCalls, APathThatDoesNotFitIsReported) {
    listDirectory("/" + std::string(257, 'x') + "/", true, true);
    EXPECT_EQ(traces, Traces{"mbstowcs_s path conversion error.\n"});
    listDirectory("/" + std::string(258, 'x') + "/", true, true);
    fileTimeText("/" + std::string(259, 'x'));
    fileTimeText("/" + std::string(258, 'x'));
    EXPECT_EQ(traces.size(), std::size_t{1});
}

TEST_F(FileUtilCalls, FailedConversionsOfTimesAreReported) {
    failing = "FileTimeToLocalFileTime";
    EXPECT_EQ(listDirectory("/T/", true, true).size(), std::size_t{1});
    EXPECT_EQ(traces, Traces{"FileTimeToLocalFileTime error.\n"});
    traces.clear();
    failing = "FileTimeToSystemTime";
    EXPECT_NE(fileTimeText("/T/file"), "");
    EXPECT_EQ(traces, Traces{"FileTimeToSystemTime error.\n"});
}

}  // namespace
