// Tests that the line reader handles line ends, Ctrl-Z and missing files as the instrument does.

#include <gtest/gtest.h>

#include "support/line_reader.h"
#include "support/logger.h"
#include "tests/helpers/log_text.h"

namespace {

// Returns the lines read, each with a '|' behind it, and then the rest.
std::string linesOf(LineReader& reader) {
    std::string all;
    std::string line;
    while (reader.readLine(line))
        all += line + '|';
    all += line;
    EXPECT_FALSE(reader.readLine(line)) << "reading at the end keeps returning the end";
    EXPECT_EQ(line, "");
    return all;
}

TEST(LineReader, ReadsTextAsTheInstrumentDoes) {
    const DeviceFolder device;
    Logger::instance().setPath("/log.txt");
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a\r\n\r\nb\r\n", "a||b|"},
        {"a\rb\n\r\r\n\r", "a\rb|\r|\r"},
        {"a\x1A\nb\n", "a"},
        {"a\n\x1Aignored\n", "a|"},
        {"a\r\x1A", "a\r"},
        {std::string("a\0\xFF\n", 4), std::string("a\0\xFF|", 4)},
    };
    for (const auto& [bytes, lines] : cases) {
        device.write("T/f", bytes);
        LineReader reader("/T\\f", bytes.size());
        EXPECT_TRUE(reader.isOpen());
        EXPECT_EQ(linesOf(reader), lines);
    }
    EXPECT_EQ(logMessages(device, "log.txt"), "") << "nothing was left out";
}

// What lies beyond the limit is reported once. The line that it cuts has no end.
TEST(LineReader, ReadsNoMoreThanItsLimit) {
    const DeviceFolder device;
    Logger::instance().setPath("/log.txt");
    device.write("T/f", "a\r\nb\r\nc\n");
    const std::pair<std::size_t, const char*> cases[] = {
        {0, ""}, {2, "a\r"}, {3, "a|"}, {5, "a|b\r"}};
    for (const auto& [limit, lines] : cases) {
        Logger::instance().open();
        LineReader reader("/T/f", limit);
        EXPECT_EQ(linesOf(reader), lines) << limit;
        EXPECT_EQ(logMessages(device, "log.txt"),
                  "  ** Warning ** File /T/f is too long; its end was not read.\n");
    }
}

TEST(LineReader, DoesNotOpenFoldersOrMissingFiles) {
    const DeviceFolder device;
    device.makeFolder("T/folder");
    for (const char* path : {"", "/T/gone", "/T/folder", "/T/folder/"}) {
        LineReader reader(path, 1);
        std::string line = "before";
        EXPECT_FALSE(reader.isOpen());
        EXPECT_FALSE(reader.readLine(line));
        EXPECT_EQ(line, "");
    }
}

}  // namespace
