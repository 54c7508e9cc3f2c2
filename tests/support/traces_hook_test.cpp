// Whether a percent sign in a name can become a conversion, and whether a failure that nobody sees
// leaves its trace in the debugger.

#include <gtest/gtest.h>

#include "platform/posix/call_hook.h"
#include "support/file_util.h"
#include "support/logger.h"
#include "tests/helpers/log_text.h"

namespace {

using Traces = std::vector<std::string>;

class Traced : public ::testing::Test {
  protected:
    void SetUp() override {
        log.setPath("/log.txt");
        setCallHook([this](const HookedCall& call) {
            if (call.name == std::string("OutputDebugStringW"))
                traces.push_back(call.arguments[0]);
            return refused == call.name ? DWORD{5} : DWORD{0};
        });
    }

    DeviceFolder device;
    Logger& log = Logger::instance();
    std::string refused;
    Traces traces;
};

// Percent signs of the arguments are taken as a format again.
TEST_F(Traced, ErrorsAndWarningsAreEchoedTheRestIsNot) {
    log.error("Error %d", 5);
    log.warning("w");
    log.write("x");
    log.writeLine("y");
    const char* const arguments[] = {"100%%", "%%%%", "%%%", "%s%n%d", "%%s"};
    for (const char* const argument : arguments)
        log.error("%s", argument);
    EXPECT_EQ(traces, (Traces{"Error 5\n", "w\n", "100%\n", "%%\n", "%%\n", "%s%n%d\n", "%s\n"}));
}

TEST_F(Traced, TracesAreFormattedOnceAndNotLogged) {
    debugPrint("*** Read only flag set on: %s", "a%%\xE9");
    debugPrint("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(traces,
              (Traces{"*** Read only flag set on: a%%\xC3\xA9\n", std::string(2047, 'x') + "\n"}));
    EXPECT_EQ(logMessages(device, "log.txt"), "");
}

TEST_F(Traced, AFailedOpenIsReportedAtEveryMessage) {
    refused = "_wfopen";
    log.setPath("/other.txt");
    log.error("lost");
    log.writeLine("lost too");
    const std::string report = "Error opening log stream...\n";
    EXPECT_EQ(traces, (Traces{report, report, "lost\n", report}));
    EXPECT_FALSE(device.exists("other.txt"));
}

TEST_F(Traced, FileUtilitiesTellOfLongPathsAndFailedConversions) {
    device.write("T/file");
    listDirectory("/" + std::string(257, 'x') + "/", true, true);
    EXPECT_EQ(traces, Traces{"mbstowcs_s path conversion error.\n"});
    listDirectory("/" + std::string(258, 'x') + "/", true, true);
    fileTimeText("/" + std::string(259, 'x'));
    fileTimeText("/" + std::string(258, 'x'));
    EXPECT_EQ(traces.size(), std::size_t{1});

    traces.clear();
    refused = "FileTimeToLocalFileTime";
    EXPECT_EQ(listDirectory("/T/", true, true).size(), std::size_t{1});
    refused = "FileTimeToSystemTime";
    EXPECT_NE(fileTimeText("/T/file"), "");
    EXPECT_EQ(traces,
              (Traces{"FileTimeToLocalFileTime error.\n", "FileTimeToSystemTime error.\n"}));
}

}  // namespace
