// Tests that a registry file that an editor exported is read correctly, and that a file is never
// replaced by one that has less.

#include "platform/posix/registry/registry_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "platform/input_limits.h"
#include "platform/utf.h"
#include "tests/helpers/bytes.h"
#include "tests/helpers/device_folder.h"

namespace {

const std::string HEADER = "Windows Registry Editor Version 5.00\r\n";
const std::string KEY = HEADER + "\r\n[HKEY_LOCAL_MACHINE\\K]\r\n";

std::string asUtf16(const std::string& text) {
    return utf16Bytes(u"\uFEFF" + host::toUtf16(text));
}

// Returns type and bytes of value "V" of key K, such as "1:41 00 00 00"; "-" when it is missing.
std::string valueOf(const std::string& file) {
    const host::Registry registry = host::Registry::fromText(file);
    const host::RegistryValue* value = registry.find("HKEY_LOCAL_MACHINE\\K", "V");
    if (value == nullptr)
        return "-";
    std::string text = std::to_string(value->type) + ":";
    char buffer[8];
    for (const char byte : value->data) {
        std::snprintf(buffer, sizeof buffer, " %02x", static_cast<unsigned>(byte) & 0xFF);
        text += buffer;
    }
    return text;
}

TEST(RegistryFile, ReadsEveryFormOfValueAndSkipsOtherLines) {
    const std::pair<const char*, const char*> cases[] = {
        {"\"V\"=dword:0000001f", "4: 1f 00 00 00"},
        {"\"v\" = dword:FFFFFFF4 ", "4: f4 ff ff ff"},
        {"\"V\"=\"\"", "1: 00 00"},
        {"\"V\"=\"\\\\\\\"];\"", "1: 5c 00 22 00 5d 00 3b 00 00 00"},
        {"\"V\"=\"\xE2\x82\xAC\"", "1: ac 20 00 00"},
        {"\"V\"=hex:", "3:"},
        {"\"V\"=hex(2):41,fF", "2: 41 ff"},
        {"\"V\"=hex:01,\\\r\n  02,\\\r\n  03", "3: 01 02 03"},
        {"\"V\"=dword:1\r\n\"V\"=dword:2", "4: 02 00 00 00"},
        {"[HKEY_LOCAL_MACHINE\\O]\r\n[hkey_local_machine\\k]\r\n\"V\"=dword:3", "4: 03 00 00 00"},
        {"; \"V\"=dword:1", "-"},
        {"\"V=dword:1", "-"},
        {"\"V\"=", "-"},
        {"\"V\"=\"open", "-"},
        {"\"V\"=\"text\" and more", "-"},
        {"\"V\"=dword:", "-"},
        {"\"V\"=dword:-1", "-"},
        {"\"V\"=dword:123456789", "-"},
        {"\"V\"=hex", "-"},
        {"\"V\"=hex(z):01", "-"},
        {"\"V\"=hex:01,,02", "-"},
        {"\"V\"=hex:001", "-"},
        {"[HKEY_LOCAL_MACHINE\\O]\r\n\"V\"=dword:1", "-"},
        {"[\r\n\"V\"=dword:1", "-"},
        {"[-HKEY_LOCAL_MACHINE\\O]\r\n\"V\"=dword:1", "-"},
    };
    for (const auto& [line, value] : cases) {
        SCOPED_TRACE(line);
        const std::string file = KEY + line;
        EXPECT_EQ(valueOf(file), value);
        EXPECT_EQ(valueOf("\xEF\xBB\xBF" + file + "\r\n"), value);
        EXPECT_EQ(valueOf(asUtf16(file)), value);
        // The following line is still read.
        EXPECT_EQ(valueOf(file + "\r\n" + KEY + "\"V\"=dword:9"), "4: 09 00 00 00");
    }
    EXPECT_EQ(valueOf("\"V\"=dword:1\n" + KEY), "-");
    EXPECT_EQ(valueOf(KEY + "\"V\"=\"\xE9\""), "-") << "Latin-1";
}

TEST(RegistryFile, WritesWhatItHasReadInTheSameEncoding) {
    const std::string before = KEY + "\"Num\"=dword:00000001\r\n@=\"d\"\r\n\"Zone\"=hex:01,02\r\n";
    const std::string after = KEY + "@=\"d\"\r\n\"Num\"=dword:0000001f\r\n" +
                              "\"Q\\\"\\\\\"=\"a\\\\ \xC4\x80\"\r\n\"Zone\"=hex:01,02\r\n" +
                              "\r\n[L]\r\n\"E\"=hex(4):01\r\n";
    for (const bool isUtf16 : {false, true}) {
        host::Registry registry = host::Registry::fromText(isUtf16 ? asUtf16(before) : before);
        registry.keys["hkey_local_machine\\K"]["num"] = {REG_DWORD, std::string("\x1F\0\0\0", 4)};
        registry.keys["HKEY_LOCAL_MACHINE\\K"]["Q\"\\"] = {REG_SZ,
                                                           utf16Bytes(u"a\\ \u0100") + '\0' + '\0'};
        registry.keys["L"]["E"] = {REG_DWORD, "\1"};
        EXPECT_EQ(registry.toText(), isUtf16 ? asUtf16(after) : after);
    }
}

TEST(RegistryFile, IsReplacedAtomicallyOrStays) {
    struct Case {
        std::string before;
        DWORD error;
        std::string told = "";
    };
    const std::string lost =
        "registry.reg: line 4 is neither a key nor a value; nothing will be "
        "written to this file\n";
    const Case cases[] = {
        {KEY + "\"V\"=dword:00000001\r\n", 0},
        {"", 0},
        {KEY + "; of Ann\r\n", 5, lost},
        {KEY + "\r\n\"V\"=\"\xE9\"\r\n", 5, std::string(lost).replace(19, 1, "5")},
        {asUtf16(KEY + "\r\n\r\n\"V\"=-\r\n"), 5, std::string(lost).replace(19, 1, "6")},
        {std::string(limits::REGISTRY + 1, '\n'), 112,
         "registry.reg cannot be read: File too large\n"},
    };
    for (const Case& test : cases) {
        const DeviceFolder device;
        device.write("registry.reg", test.before);
        // A leftover of a run that was killed, or a link planted to redirect the write.
        std::filesystem::create_symlink("a file of the host", device.root() / "registry.reg.new");
        ::testing::internal::CaptureStderr();
        host::Registry registry;
        DWORD error = host::loadRegistry(registry);
        registry.keys["HKEY_LOCAL_MACHINE\\K"]["v"] = {REG_DWORD, std::string("\2\0\0\0", 4)};
        if (error == 0)
            error = host::saveRegistry(registry);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), test.told);
        EXPECT_EQ(error, test.error);
        const std::string written =
            KEY + "\"" + (test.before.empty() ? "v" : "V") + "\"=dword:00000002\r\n";
        EXPECT_TRUE(device.read("registry.reg") == (error == 0 ? written : test.before));
        EXPECT_EQ(device.exists("registry.reg.new"), error != 0);
    }
}

// What is no regular file is neither read, which could take for ever, nor replaced.
TEST(RegistryFile, IsNotReplacedWhenItCannotBeRead) {
    const DeviceFolder device;
    const std::filesystem::path file = device.root() / "registry.reg";
    const TIME_ZONE_INFORMATION zone{};
    const std::function<void()> obstacles[] = {
        [&] { std::filesystem::create_symlink("registry.reg", file); },
        [&] { std::filesystem::create_symlink("/dev/zero", file); },
        [&] { ::mkfifo(file.c_str(), 0600); },
        [&] { std::filesystem::create_directory(file); },
    };
    for (const auto& obstacle : obstacles) {
        obstacle();
        HKEY key{};
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"K", 0, KEY_READ, &key), 5);
        EXPECT_FALSE(SetTimeZoneInformation(&zone));
        EXPECT_FALSE(device.exists("registry.reg.new"));
        EXPECT_TRUE(std::filesystem::remove(file));
    }
    EXPECT_TRUE(SetTimeZoneInformation(&zone));
    std::filesystem::remove(file);
    device.makeFolder("registry.reg/in the way");
    EXPECT_NE(host::saveRegistry(host::Registry()), DWORD{0});
    EXPECT_FALSE(device.exists("registry.reg.new"));
}

}  // namespace
