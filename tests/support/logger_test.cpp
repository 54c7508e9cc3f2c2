// Tests that each kind of message is written in its format, immediately and completely.

#include "support/logger.h"

#include <gtest/gtest.h>

#include "support/time_util.h"
#include "tests/helpers/log_text.h"

namespace {

class LoggerFile : public ::testing::Test {
  protected:
    void SetUp() override {
        device.makeFolder("logs");
        log.setPath("/logs/data/../log.txt");
    }
    std::string messages() const { return logMessages(device, "logs/log.txt"); }

    DeviceFolder device;
    Logger& log = Logger::instance();
};

TEST_F(LoggerFile, EveryOpenEmptiesItAndWritesTheLocalTime) {
    log.writeLine("of the last run");
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
    log.open();
    GetLocalTime(&after);
    const std::string text = logText(device, "logs/log.txt");
    EXPECT_TRUE(text == "Opening log at " + formatTime(before) + "\n" ||
                text == "Opening log at " + formatTime(after) + "\n")
        << text;
}

TEST_F(LoggerFile, EachKindOfMessageHasItsFormat) {
    log.error("x");
    log.warning("%s [%d]", "w", -3);
    log.error("%s", "100%% of %s%n.txt");
    log.write("a%%");
    EXPECT_EQ(messages().substr(messages().size() - 2), "a%") << "held back";
    log.write("b");
    log.writeLine("c %5.1f", 1.25);
    log.writeLine("%s", "");
    EXPECT_EQ(messages(),
              "\n    *** ERROR *** x\n\n"
              "  ** Warning ** w [-3]\n"
              "\n    *** ERROR *** 100%% of %s%n.txt\n\n"
              "a%bc   1.2\n"
              "\n");
}

TEST_F(LoggerFile, CutsOverlongMessages) {
    const std::string fits(2047, 'f');
    const std::string cut(100000, 'c');
    log.writeLine("%s", fits.c_str());
    log.error("ab%s", cut.c_str());
    EXPECT_EQ(messages(), fits + "\n" + "\n    *** ERROR *** ab" + cut.substr(0, 2045) + "\n\n");
}

}  // namespace
