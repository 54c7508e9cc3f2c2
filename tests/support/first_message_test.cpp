// Whether a message is lost before the log has a place: it goes to "log.txt" in the current folder.

#include <gtest/gtest.h>

#include "support/logger.h"
#include "tests/helpers/log_text.h"

namespace {

TEST(FirstMessage, MakesALogInTheCurrentFolder) {
    const DeviceFolder device;
    device.makeFolder("current");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(device.root() / "current");
    Logger::instance();
    EXPECT_FALSE(device.exists("current/log.txt"));
    Logger::instance().warning("early");
    std::filesystem::current_path(before);
    EXPECT_EQ(logMessages(device, "current/log.txt"), "  ** Warning ** early\n");

    // The old file keeps what it has when the log moves on.
    Logger::instance().setPath("/later.txt");
    Logger::instance().writeLine("late");
    EXPECT_EQ(logMessages(device, "current/log.txt"), "  ** Warning ** early\n");
    EXPECT_EQ(logMessages(device, "later.txt"), "late\n");
}

}  // namespace
