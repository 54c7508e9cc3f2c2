// Tests that failures which the services do not report to their callers leave a trace, a warning or
// a fallback value, and that a percent sign in a name does not become a format conversion.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <functional>

#include "platform/posix/call_hook.h"
#include "support/file_util.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/system_config.h"
#include "tests/helpers/log_text.h"

namespace {

TEST(ConfigCalls, FailuresAfterTheOpenAreLogged) {
    const DeviceFolder device;
    SystemConfig& config = SystemConfig::instance();
    struct Case {
        const char* failing;
        int32_t result;  // of getting the language, or SET
        const char* logged;
    };
    constexpr int32_t SET = 1;
    // Setters log "setting", also when closing the key fails.
    const Case cases[] = {
        {"", 4, ""},
        {"RegOpenKeyExW", -1, ""},
        {"RegQueryValueExW", -1, "getting"},
        {"RegCloseKey", 4, "closing"},
        {"RegOpenKeyExW", SET, ""},
        {"RegSetValueExW", SET, "setting"},
        {"RegCloseKey", SET, "setting"},
        {"RegFlushKey", SET, ""},
    };
    Logger::instance().setPath("/log.txt");
    device.setLanguage(4);
    std::string last;
    std::string access;
    for (const Case& test : cases) {
        Logger::instance().open();
        setCallHook([&](const HookedCall& call) {
            const bool ofRegistry = std::string(call.name).rfind("Reg", 0) == 0;
            last = ofRegistry ? call.name : last;
            access = call.name == std::string("RegOpenKeyExW") ? call.arguments.at(1) : access;
            return std::string(call.name) == test.failing ? DWORD{5} : DWORD{0};
        });
        if (test.result == SET)
            config.setLanguage(SET);
        else
            EXPECT_EQ(config.getDword(LANGUAGE), test.result);
        const std::string warning = std::string("  ** Warning ** Error ") + test.logged;
        EXPECT_EQ(logMessages(device, "log.txt"),
                  *test.logged == '\0' ? "" : warning + " registry key [LANGUAGE].\n")
            << test.failing;
        EXPECT_EQ(access, std::to_string(test.result == SET ? KEY_WRITE : KEY_READ));
    }
    EXPECT_EQ(last, "RegFlushKey");
    setCallHook({});
    EXPECT_EQ(config.getLanguage(), 1);
    config.setWindowsUserName("u");
    // A text without a terminator would be stored in hexadecimal.
    EXPECT_NE(device.read("registry.reg").find("\"WINDOWS_USER_NAME\"=\"u\""), std::string::npos);
}

// Nobody reads the other end of a pipe, a terminal or a socket that is full.
TEST(DebugOutput, IsDroppedWhenItCannotBeWrittenAtOnce) {
    ::alarm(60);  // ends the test when a write waits
    const int before = ::dup(STDERR_FILENO);
    const std::function<bool(int*)> kinds[] = {
        [](int* ends) { return ::pipe(ends) == 0; },
        [](int* ends) {
            return (ends[0] = ::posix_openpt(O_RDWR | O_NOCTTY)) >= 0 && ::unlockpt(ends[0]) == 0 &&
                   (ends[1] = ::open(::ptsname(ends[0]), O_RDWR | O_NOCTTY)) >= 0;
        },
        [](int* ends) { return ::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0; },
    };
    for (const auto& open : kinds) {
        int ends[2] = {};
        ASSERT_TRUE(open(ends));
        ::dup2(ends[1], STDERR_FILENO);
        for (int i = 0; i < 1000; ++i)
            OutputDebugStringW(WideString(1000, u'x').c_str());
        ::dup2(before, STDERR_FILENO);
        EXPECT_EQ(::fcntl(ends[1], F_GETFL) & O_NONBLOCK, 0)
            << "those who share it would lose text";
        std::string start(4, ' ');
        EXPECT_EQ(::read(ends[0], start.data(), start.size()), 4);
        EXPECT_EQ(start, "xxxx");
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ::close(before);
    ::alarm(0);
}

using Traces = std::vector<std::string>;

class Traced : public ::testing::Test {
  protected:
    void SetUp() override {
        log.setPath("/log.txt");
        setCallHook([this](const HookedCall& call) {
            if (call.name == std::string("OutputDebugStringW"))
                traces.push_back(call.arguments[0]);
            closedSearches += call.name == std::string("FindClose");
            return refused == call.name ? DWORD{5} : DWORD{0};
        });
    }

    DeviceFolder device;
    Logger& log = Logger::instance();
    std::string refused;
    Traces traces;
    int closedSearches = 0;
};

// Percent signs in arguments are interpreted as format again.
TEST_F(Traced, OnlyErrorsAndWarningsAreTraced) {
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

TEST_F(Traced, AFailedOpenIsReportedAndTriedAgainAtEveryMessage) {
    log.setPath("/later/other.txt");
    log.error("lost");
    log.writeLine("lost too");
    const std::string report = "Error opening log stream...\n";
    EXPECT_EQ(traces, (Traces{report, report, "lost\n", report}));
    EXPECT_EQ(device.tree().size(), std::size_t{1}) << "only the log of before";
    device.makeFolder("later");
    log.writeLine("kept");
    EXPECT_EQ(logMessages(device, "later/other.txt"), "kept\n");
}

TEST_F(Traced, FileUtilitiesTraceLongPathsAndFailedConversions) {
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
    EXPECT_EQ(closedSearches, 2);
}

}  // namespace
