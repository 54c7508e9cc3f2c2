// Tests that an odd line in a string table does not damage the texts of other lines.

#include "support/string_table.h"

#include <gtest/gtest.h>

#include <array>

#include "support/languages.h"
#include "support/logger.h"
#include "support/system_settings.h"
#include "support/text.h"
#include "tests/helpers/bytes.h"
#include "tests/helpers/log_text.h"

namespace {

const std::string NONE = "<NO STRING>";

class Strings : public ::testing::Test {
  protected:
    void SetUp() override {
        SystemSettings::instance().dataFolder = "\\D\\/data/";
        Logger::instance().setPath("/log.txt");
    }

    void write(const std::string& suffix, const std::string& bytes) const {
        device.write("D/data/lang/StringTable_" + suffix + ".txt", bytes);
    }
    // Writes an English table that contains only these bytes, and loads it.
    void use(const std::string& bytes) {
        write("en", bytes);
        table.setLanguage(0);
    }
    std::string lookup(const std::string& key) const { return narrow(table.lookup(key)); }

    DeviceFolder device;
    StringTable& table = StringTable::instance();
};

TEST_F(Strings, ReadsTheKeyAndTextOfEachLine) {
    const std::array<std::string, 3> cases[] = {
        {"KEY text\r\n", "KEY", "text"},
        {"KEY\t\tHello world\r\n", "KEY", "Hello world"},
        {"KEY \t two  blanks \t\r\n", "KEY", "two  blanks \t"},
        {"KEY a#\x1A-b\r\n", "KEY", "a#\x1A-b"},
        {"KEY Hello", "KEY", "Hel"},
        {"KEY Hello\n", "KEY", "Hell"},
        {"KEY\r\n", "KEY", NONE},
        {"KEY", "KEY", NONE},
        {"KEY \t \r\n", "KEY", NONE},
        {"#KEY text\r\n", "#KEY", NONE},
        {"# c\r\n\r\n\nKEY text\r\n", "KEY", "text"},
        {" #comment\r\n", "", "#comment"},
        {" \t\r\n", "", ""},
        {"KEY first\r\nKEY second\r\n", "KEY", "second"},
        {"KEY first\r\nKEY\r\nKEY \nKEY \t\r\r\nKEY ", "KEY", "first"},
        {"key text\r\n", "KEY", NONE},
        {std::string(100000, 'k'), "k", NONE},
    };
    for (const auto& [line, key, text] : cases) {
        use(utf16Bytes(widen(line)));
        EXPECT_EQ(lookup(key), text) << line.substr(0, 30);
    }
    // Wide keys, a byte-order mark, and half a character at the end.
    use(utf16Bytes(TEXT("\xFEFF# \x65E5\r\n\x0100\x0141 \x65E5 \xD83D\xDE00\r\n")) + "x");
    EXPECT_EQ(table.lookup("??"), TEXT("\x65E5 \xD83D\xDE00"));
}

// A long line is read in pieces of 511 characters, each of which is parsed as a line with a line
// end.
TEST_F(Strings, ReadsLongLinesInPiecesOf511Characters) {
    struct Case {
        std::size_t length;
        const char* behind;
        std::string b;
    };
    const Case cases[] = {
        {509, "B rest\r\n", "rest"},
        {507, "\r\nB b\r\n", "b"},  // the line end just fits
        {508, "\r\nB b\r\n", "b"},  // the line end is one too long
        {509, "#B b\r\n", NONE},    // a piece that begins with '#' is a comment
    };
    for (const Case& test : cases) {
        use(utf16Bytes(widen("A " + std::string(test.length, 'x') + test.behind + "C c\r\n")));
        EXPECT_EQ(lookup("A"), std::string(507, 'x'));
        EXPECT_EQ(lookup("B"), test.b);
        EXPECT_EQ(lookup("C"), "c");
    }
}

// The screens show the texts of each language.
TEST_F(Strings, TheNumeralsAreLoadedFirst) {
    write("numerals", utf16Bytes(TEXT("N numeral\r\nL shared\r\n")));
    use(utf16Bytes(TEXT("L own\r\n")));
    EXPECT_EQ(lookup("N") + lookup("L"), "numeralown");
    EXPECT_EQ(logMessages(device, "log.txt"), "");
    for (const int language : {-1, LANGUAGE_COUNT}) {
        Logger::instance().open();
        table.setLanguage(language);
        EXPECT_EQ(lookup("L"), "shared");
        EXPECT_EQ(table.language(), language);
        EXPECT_TRUE(table.isLoaded());
        EXPECT_EQ(logMessages(device, "log.txt"), "\n    *** ERROR *** Language " +
                                                      std::to_string(language) +
                                                      " not recognized in StringTable...\n\n");
    }
}

TEST_F(Strings, ReloadsCompletelyAndIgnoresMissingFiles) {
    use(utf16Bytes(TEXT("KEY text\r\n#\r\n \t x\r\n")));
    table.setLanguage(1);
    for (const std::string key : {"KEY", NONE.c_str()})
        EXPECT_EQ(lookup(key), NONE);
    EXPECT_EQ(lookup(""), "");
    const std::pair<const char*, int> loads[] = {
        {nullptr, 1}, {"", 1}, {"gone.txt", 2}, {"StringTable_en.txt", 0}};
    for (const auto& [file, result] : loads)
        EXPECT_EQ(table.load(file), result);
    EXPECT_EQ(lookup("KEY"), "text");
    EXPECT_EQ(logMessages(device, "log.txt"), "");
}

}  // namespace
