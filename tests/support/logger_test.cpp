// Tests that each kind of message is written in its format, immediately and completely.

#include "support/logger.h"

#include <gtest/gtest.h>

#include "tests/helpers/log_text.h"

namespace {

// Overlong messages are cut.
TEST(LoggerFile, EachKindOfMessageHasItsFormat) {
    const DeviceFolder device;
    device.makeFolder("logs");
    Logger& log = Logger::instance();
    log.setPath("/logs/data/../log.txt");
    const auto messages = [&] { return logMessages(device, "logs/log.txt"); };
    log.error("x");
    log.warning("%s [%d]", "w", -3);
    log.error("%s", "100%% of %s%n.txt");
    log.write("a%%");
    EXPECT_EQ(messages().substr(messages().size() - 2), "a%") << "held back";
    log.write("%s", "b");
    log.writeLine("c %5.1f", 1.25);
    log.writeLine("%s", std::string(2047, 'f').c_str());
    log.error("ab%s", std::string(100000, 'c').c_str());
    EXPECT_EQ(messages(),
              "\n    *** ERROR *** x\n\n"
              "  ** Warning ** w [-3]\n"
              "\n    *** ERROR *** 100%% of %s%n.txt\n\n"
              "a%bc   1.2\n" +
                  std::string(2047, 'f') + "\n\n    *** ERROR *** ab" + std::string(2045, 'c') +
                  "\n\n");
}

}  // namespace
