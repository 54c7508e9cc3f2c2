// Tests that a translation which the device would misread is rejected by the build, before it shows
// as a wrong or missing text.

#include "tools/guidata/text_source.h"

#include <gtest/gtest.h>

#include "tests/helpers/device_folder.h"
#include "tools/guidata/extra_kerning.h"
#include "tools/guidata/text_encoding.h"

namespace {

const ScreenKeys KEYS = {{"STR_A", {}}, {"STR_B", {}}};

TEST(TextSource, RejectsLinesThatTheDeviceWouldMisread) {
    const std::string sound = "STR_A\tone\nSTR_B\ttwo\n";
    struct Case {
        const char* what;
        std::string source;
        std::string errors;  // one per line
    };
    const Case cases[] = {
        {"a sound source", sound, ""},
        {"line ends of Windows, comments, no last line end", "# c\r\n\r\nSTR_A one\r\nSTR_B two",
         ""},
        {"a missing key", "STR_B two\n", "xx.txt: STR_A is missing\n"},
        {"a key that occurs twice", sound + "\nSTR_A again\n",
         "xx.txt:4: STR_A is already defined in line 1\n"},
        {"a key in two words", "STR_A one\nSTR B two\n",
         "xx.txt:2: STR is not a key of the screen\nxx.txt: STR_B is missing\n"},
        {"a comment after a blank", sound + " # c\n",
         "xx.txt:3: there is a blank before the key\n"},
        {"a key without a text", "STR_A one\nSTR_B \t\n",
         "xx.txt:2: STR_B has no text\nxx.txt: STR_B is missing\n"},
        {"an ideographic space after the key", "STR_A one\nSTR_B\xE3\x80\x80two\n",
         "xx.txt:2: a key may contain only capitals, digits and underscores\nxx.txt: STR_B is "
         "missing\n"},
        {"not UTF-8", "STR_A one\nSTR_B \xF0\x9F\x98\x80\xE9\n",
         "xx.txt:2: the line is not UTF-8 text\n"},
        {"a carriage return inside", "STR_A o\rne\n",
         "xx.txt:1: the line contains a control character\n"},
        {"the longest line", sound.substr(10) + "STR_A " + std::string(503, 'x') + "\n", ""},
        {"too long a line", sound.substr(10) + "STR_A " + std::string(504, 'x') + "\n",
         "xx.txt:2: the line has 512 characters with its line end; the device reads only "
         "511\nxx.txt: STR_A is missing\n"},
    };
    for (const Case& c : cases) {
        std::string errors;
        try {
            parseTextSource(c.source, "xx.txt", KEYS);
        } catch (const std::runtime_error& error) {
            errors = error.what() + std::string("\n");
        }
        const std::string head = "xx.txt cannot be used:\n";
        EXPECT_EQ(errors.compare(0, head.size(), head) == 0 ? errors.substr(head.size()) : errors,
                  c.errors)
            << c.what;
    }
}

TEST(ExtraKerning, IsScaledByTheEmAndReadBackByTheDevice) {
    // '#' may be the second character of a pair but not the first.
    const auto pairs = parseExtraKerning("# c\nAV -60\n1% 25\n\xC3\x89: 0\nV# 75\n", "k.txt");
    const KerningTable expected = {
        {{'A', 'V'}, -2}, {{'1', '%'}, 1}, {{0xC9, ':'}, 0}, {{'V', '#'}, 3}};
    const DeviceFolder device;
    device.write("/f.kern", encodeKernFile(scaledKerning(pairs, 40)));
    FontData read;
    loadKerningFile("/f.kern", read);
    EXPECT_EQ(read.kerning, expected);
}

TEST(ExtraKerning, RejectsMalformedLines) {
    for (const std::string line : {"AV", "AV x", "AV -", "AV 5 ", "AV 1001", "AV 5\xC3\xA9"}) {
        try {
            parseExtraKerning("AV 1\n" + line, "k.txt");
            ADD_FAILURE() << line;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()).substr(0, 9), "k.txt:2: ");
        }
    }
}

}  // namespace
