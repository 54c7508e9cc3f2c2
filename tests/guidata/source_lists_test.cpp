// Whether the lists that the GUI data is made with are read as meant: a pair or an edge that is
// misread is seen by nobody before the instrument shows it.

#include <gtest/gtest.h>

#include "tests/helpers/device_folder.h"
#include "tools/guidata/extra_kerning.h"
#include "tools/guidata/screen_keys.h"
#include "tools/guidata/text_encoding.h"

namespace {

TEST(ExtraKerning, IsScaledByTheEmAndReadBackByTheDevice) {
    // A number sign may be the second character of a pair, not its first one.
    std::string error;
    const auto pairs =
        parseExtraKerning("# c\nAV -60\n1% 25\n\xC3\x89: 0\nV# 75\n", "k.txt", error);
    ASSERT_TRUE(pairs) << error;
    const KerningTable expected = {
        {{'A', 'V'}, -2}, {{'1', '%'}, 1}, {{0xC9, ':'}, 0}, {{'V', '#'}, 3}};
    const DeviceFolder device;
    device.write("/f.kern", encodeKernFile(scaledKerning(*pairs, 40)));
    FontData read;
    loadKerningFile("/f.kern", read);
    EXPECT_EQ(read.kerning, expected);
}

TEST(SourceLists, RefuseOtherLines) {
    std::string error;
    for (const std::string line : {"AV", "AV x", "AV -", "AV 5 ", "AV 1001", "AV 5\xC3\xA9"}) {
        EXPECT_FALSE(parseExtraKerning("AV 1\n" + line, "k.txt", error)) << line;
        EXPECT_EQ(error.substr(0, 9), "k.txt:2: ") << line;
    }
    for (const std::string line : {"STR_A", "STR_A x", "STR_A -5", "STR_A 123456", " 5"}) {
        EXPECT_FALSE(parseScreenKeys("STR_B 1\n" + line + "\n", "keys.txt", error)) << line;
        EXPECT_EQ(error, "keys.txt:2: expected a key, a blank and a number of pixels") << line;
    }
    const auto keys = parseScreenKeys("# c\nSTR_A 1024  v1.1\nSTR_B 500\n", "keys.txt", error);
    ASSERT_TRUE(keys) << error;
    EXPECT_EQ(keys->at("STR_A").rightEdge, 1024);
    EXPECT_EQ(keys->at("STR_A").suffix, u" v1.1");
    EXPECT_EQ(keys->at("STR_B").suffix, u"");
}

}  // namespace
