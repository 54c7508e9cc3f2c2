// Whether the list of kerning pairs is read as meant: a pair that is misread is seen by nobody
// before the instrument shows it.

#include <gtest/gtest.h>

#include "tests/helpers/device_folder.h"
#include "tools/guidata/extra_kerning.h"
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

TEST(ExtraKerning, RefusesOtherLines) {
    std::string error;
    for (const std::string line : {"AV", "AV x", "AV -", "AV 5 ", "AV 1001", "AV 5\xC3\xA9"}) {
        EXPECT_FALSE(parseExtraKerning("AV 1\n" + line, "k.txt", error)) << line;
        EXPECT_EQ(error.substr(0, 9), "k.txt:2: ") << line;
    }
}

}  // namespace
