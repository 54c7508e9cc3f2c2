// Hand-picked kerning pairs, up to what the device's reader makes of them.

#include "tools/extra_kerning.h"

#include <gtest/gtest.h>

#include "tools/text_encoding.h"

namespace {

TEST(ExtraKerningSource, IsScaledByTheEm) {
    std::string error;
    const auto pairs = parseExtraKerning("# c\nAV -60\n1% 25\n\xC3\x89: 0\n", "k.txt", error);
    ASSERT_TRUE(pairs) << error;
    const KerningTable scaled = scaledKerning(*pairs, 40);
    const KerningTable expected = {{{'A', 'V'}, -2}, {{'1', '%'}, 1}, {{0xC9, ':'}, 0}};
    EXPECT_EQ(scaled, expected);
}

TEST(ExtraKerningSource, RefusesOtherLines) {
    for (const std::string line :
         {"AV", "AV ", "AV x", "AV -", "AV 5 ", "AV 1001", "AV 5\xC3\xA9"}) {
        std::string error;
        EXPECT_FALSE(parseExtraKerning("AV 1\n" + line, "k.txt", error)) << line;
        EXPECT_EQ(error.substr(0, 9), "k.txt:2: ") << line;
    }
}

TEST(ExtraKerningFile, IsReadBackByTheDevice) {
    // A number sign may be the second character of a pair, not its first one.
    const KerningTable pairs = {{{'A', 'V'}, -12}, {{'V', '#'}, 3}, {{0x66F4, ' '}, 0}};
    const std::string bytes = encodeKernFile(pairs);
    KerningTable read;
    WideString line;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        line += static_cast<WCHAR>(low | (high << 8));
        if (line.back() != u'\n')
            continue;
        EXPECT_EQ(line[line.size() - 2], u'\r');
        parseKerningLine(line, read);
        line.clear();
    }
    EXPECT_TRUE(line.empty());
    EXPECT_EQ(read, pairs);
}

}  // namespace
