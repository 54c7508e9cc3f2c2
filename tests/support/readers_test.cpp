// Tests that the line reader handles line ends, Ctrl-Z and missing files as the instrument does.

#include <gtest/gtest.h>

#include "support/line_reader.h"
#include "support/logger.h"
#include "tests/helpers/log_text.h"

namespace {

using Lines = std::vector<std::string>;

TEST(LineReader, ReadsTextAsTheInstrumentDoes) {
    const DeviceFolder device;
    Logger::instance().setPath("/log.txt");
    struct Case {
        std::string bytes;
        Lines lines;
        std::string rest;
    };
    const Case cases[] = {
        {"", {}, ""},
        {"a\r\n\r\nb\r\n", {"a", "", "b"}, ""},
        {"a\rb\n\r\r\n\r", {"a\rb", "\r"}, "\r"},
        {"a\x1A\nb\n", {}, "a"},
        {"a\n\x1Aignored\n", {"a"}, ""},
        {"a\r\x1A", {}, "a\r"},
        {std::string("a\0\xFF\n", 4), {std::string("a\0\xFF", 3)}, ""},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.bytes.substr(0, 20));
        device.write("T/f", test.bytes);
        LineReader reader("/T\\f", test.bytes.size());
        ASSERT_TRUE(reader.isOpen());
        Lines lines;
        std::string line;
        while (reader.readLine(line))
            lines.push_back(line);
        EXPECT_EQ(lines, test.lines);
        EXPECT_EQ(line, test.rest);
        // Reading at the end keeps returning the end.
        EXPECT_FALSE(reader.readLine(line));
        EXPECT_EQ(line, "");
        EXPECT_EQ(logMessages(device, "log.txt"), "") << "nothing was left out";
    }
}

// What lies beyond the limit is reported once. The line that it cuts has no end.
TEST(LineReader, ReadsNoMoreThanItsLimit) {
    const DeviceFolder device;
    Logger::instance().setPath("/log.txt");
    device.write("T/f", "a\r\nb\r\nc\n");
    const std::pair<std::size_t, std::string> cases[] = {{0, ""}, {2, ""}, {3, "a"}, {5, "a"}};
    for (const auto& [limit, lines] : cases) {
        Logger::instance().open();
        LineReader reader("/T/f", limit);
        std::string line;
        std::string read;
        for (int i = 0; i < 4; ++i)
            read += reader.readLine(line) ? line : "";
        EXPECT_EQ(read, lines) << limit;
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
