// Tests that no path leads out of the device, that names survive the conversion between the
// device's UTF-16 and this computer's UTF-8, and that a debugger message is one line.

#include <gtest/gtest.h>

#include "platform/posix/command_line.h"
#include "platform/posix/files/device.h"
#include "platform/utf.h"
#include "tests/helpers/device_folder.h"

namespace {

TEST(Paths, AreResolvedAsTextAndStayInTheDevice) {
    const DeviceFolder device;
    const std::string root = device.root().string();
    struct Case {
        LPCWSTR path;
        std::string hostPath;
    };
    const Case cases[] = {
        {u"/", root},
        {u"\\FlashDisk\\VELD\\", root + "/FlashDisk/VELD"},
        {u"\\FlashDisk\\VELD\\/ORBUI/data/../../Updater-log.txt",
         root + "/FlashDisk/VELD/Updater-log.txt"},
        {u"/USB HD//VELD/", root + "/USB HD/VELD"},
        {u"/./a/./b/.", root + "/a/b"},
        {u"\\..\\..\\a", root + "/a"},
        {u"/a/../../../b/..", root},
        {u"/.a./..b", root + "/.a/..b"},
        {u"/a.../b. .", root + "/a.../b"},
        {u"/a/...", root + "/a"},
        {u"/a/.. ", root + "/a"},
        {u"/\xE9\xDCE9", root + "/\xC3\xA9\xE9"},
        {u"log.txt", "./log.txt"},
        {u"a/../../log.txt", "./log.txt"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(host::toUtf8(test.path));
        std::string hostPath;
        EXPECT_EQ(host::resolveName(test.path, hostPath), DWORD{0});
        EXPECT_EQ(hostPath, test.hostPath);
    }
    std::string hostPath;
    EXPECT_EQ(host::resolveName(u"", hostPath), DWORD{3});
    EXPECT_EQ(host::resolveName((u"/" + std::u16string(258, u'a')).c_str(), hostPath), DWORD{0});
    EXPECT_EQ(host::resolveName((u"/" + std::u16string(259, u'a')).c_str(), hostPath), DWORD{3});
    for (const char16_t forbidden : std::u16string_view(u"<>:\"|?*\n\x1F"))
        EXPECT_EQ(host::resolveName((u"/a/b" + std::u16string(1, forbidden)).c_str(), hostPath),
                  DWORD{123});
}

TEST(Paths, IgnoreTheCaseOfLatin1Letters) {
    EXPECT_EQ(host::foldCase("aZ \u00C0\u00DE\u00D7\u00DF \u0100\xFF"),
              "az \u00E0\u00FE\u00D7\u00DF \u0100\xFF");
}

TEST(Utf, ConvertsEveryCodePointAndKeepsOtherBytes) {
    EXPECT_EQ(host::toUtf16("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xE9"),
              u"\u00E9\u20AC\U0001F600\xDCE9");
    // The first and the last code point of each length, and those around the surrogates.
    EXPECT_EQ(host::toUtf16("\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"),
              u"\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF");
    EXPECT_EQ(host::toUtf8(u"\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"),
              "\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF");
    EXPECT_EQ(host::toUtf16("\xC0\xAF"), u"\xDCC0\xDCAF");
    EXPECT_EQ(host::toUtf16("\xED\xA0\x80\xED\xBF\xBF"), u"\xDCED\xDCA0\xDC80\xDCED\xDCBF\xDCBF");
    // Lone surrogates are encoded individually.
    EXPECT_EQ(host::toUtf8(u"\xD83D"), "\xED\xA0\xBD");
    EXPECT_EQ(host::toUtf8(u"\xD83D\x0041"), "\xED\xA0\xBD\x41");
    EXPECT_EQ(host::toUtf8(u"\xDE00"), "\xED\xB8\x80");
}

TEST(CommandLine, QuotesWhatIsEmptyOrHasBlanks) {
    const char* const arguments[] = {"KSTRL.exe", "", "a b", "c\td", "/auto"};
    host::setCommandLine(5, arguments);
    EXPECT_EQ(host::toUtf8(GetCommandLineW()), "KSTRL.exe \"\" \"a b\" \"c\td\" /auto");
}

TEST(DebugOutput, IsOneLinePerMessage) {
    ::testing::internal::CaptureStderr();
    OutputDebugStringW(u"two\nlines \xE9 %s\n");
    OutputDebugStringW(u"");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "two lines \xC3\xA9 %s\n\n");
}

}  // namespace
