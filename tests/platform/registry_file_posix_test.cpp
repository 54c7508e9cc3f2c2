// Tests that a registry file written by a person or an editor is read correctly, and that rewriting
// it loses nothing.

#include "platform/posix/registry/registry_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/posix/utf.h"
#include "tests/helpers/bytes.h"
#include "tests/helpers/device_folder.h"

namespace {

const std::string HEADER = "Windows Registry Editor Version 5.00\r\n\r\n";
const std::string KEY = "[HKEY_LOCAL_MACHINE\\K]\r\n";

std::string asUtf16(const std::string& text) {
    return utf16Bytes(u"\uFEFF" + host::toUtf16(text));
}

std::string asUtf16BigEndian(const std::string& text) {
    std::string bytes = asUtf16(text);
    for (std::size_t i = 0; i < bytes.size(); i += 2)
        std::swap(bytes[i], bytes[i + 1]);
    return bytes;
}

// Returns type and bytes of value "V" of key K, such as "1:41 00 00 00"; "-" when it is missing.
std::string valueOf(const std::string& file, const char16_t* name = u"V") {
    const host::Registry registry = host::Registry::fromText(file);
    const host::RegistryValue* value = registry.find(u"HKEY_LOCAL_MACHINE\\K", name);
    if (value == nullptr)
        return "-";
    std::string text = std::to_string(value->type) + ":";
    char buffer[8];
    for (const BYTE byte : value->data) {
        std::snprintf(buffer, sizeof buffer, " %02x", byte);
        text += buffer;
    }
    return text;
}

TEST(RegistryFile, ParsesEveryFormOfValue) {
    struct Case {
        const char* line;
        const char* value;
    };
    const Case cases[] = {
        {"\"V\"=dword:0000001f", "4: 1f 00 00 00"},
        {"\"v\"=dword:FFFFFFF4", "4: f4 ff ff ff"},
        {"  \"V\" = dword:7  ", "4: 07 00 00 00"},
        {"\"V\"=dword:4 ; remark", "4: 04 00 00 00"},
        {"\"V\"=hex:01 ;,02", "3: 01"},
        {"\"V\"=\"a\";\"b\"", "1: 61 00 00 00"},
        {"\"V\"=\"\"", "1: 00 00"},
        {"\"V\"=\"\\\\\\\"\"", "1: 5c 00 22 00 00 00"},
        {"\"V\"=\"\xE2\x82\xAC;#\"", "1: ac 20 3b 00 23 00 00 00"},
        {"\"V\"=\"]\"", "1: 5d 00 00 00"},
        {"\"V\"=hex:01,fF,0", "3: 01 ff 00"},
        {"\"V\"=hex:", "3:"},
        {"\"V\"=hex(2):41,00,00,00", "2: 41 00 00 00"},
        {"\"V\"=hex(0):", "0:"},
        {"\"V\"=hex:01,\\\r\n  02,\\\r\n  03\r\n", "3: 01 02 03"},
        {"\"V\"=hex:01,\\", "3: 01"},
        {"\"V\"=dword:1\r\n\"V\"=-\r\n\"V\"=dword:2", "4: 02 00 00 00"},
        {"[HKEY_LOCAL_MACHINE\\OTHER]\r\n[hkey_local_machine\\k]\r\n\"V\"=dword:3",
         "4: 03 00 00 00"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.line);
        const std::string file = HEADER + KEY + test.line;
        EXPECT_EQ(valueOf(file), test.value);
        EXPECT_EQ(valueOf(file + "\r\n"), test.value);
        EXPECT_EQ(valueOf("\xEF\xBB\xBF" + file), test.value);
        EXPECT_EQ(valueOf(asUtf16(file)), test.value);
        EXPECT_EQ(valueOf(asUtf16BigEndian(file)), test.value);
    }
    EXPECT_EQ(valueOf(HEADER + KEY + "@=\"d\"", u""), "1: 64 00 00 00");
}

TEST(RegistryFile, SkipsLinesThatCannotBeParsed) {
    for (const std::string line : {"\"V=dword:1",
                                   "\"V\"=",
                                   "\"V\"=\"open",
                                   "\"V\"=\"ends in a backslash\\",
                                   "\"V\"=dword:",
                                   "\"V\"=dword:123456789",
                                   "\"V\"=\"text\" and more",
                                   "\"V\"=- and more",
                                   "\"V\"=hex(z):01",
                                   "\"V\"=hex:zz",
                                   "\"V\"=hex:01,,02",
                                   "\"V\"=hex:001",
                                   "\"V\"=hex(123456789):01",
                                   "\"V\"=hex",
                                   "\"V\"=\"a\\\"",
                                   "; \"V\"=dword:1",
                                   "[",
                                   "[-HKEY_LOCAL_MACHINE\\KEY]\r\n\"V\"=dword:1",
                                   "[-HKEY_LOCAL_MACHINE\\K\\B]\r\n\"V\"=dword:1",
                                   "[HKEY_LOCAL_MACHINE\\OTHER]\r\n\"V\"=dword:1",
                                   ""}) {
        SCOPED_TRACE(line);
        const std::string file = HEADER + KEY + "\"B\"=dword:1\r\n" + line + "\r\n";
        EXPECT_EQ(valueOf(file), "-");
        EXPECT_EQ(valueOf(file, u"B"), "4: 01 00 00 00");
        // The following line is still read.
        EXPECT_EQ(valueOf(file + KEY + "\"V\"=dword:2"), "4: 02 00 00 00");
    }
    EXPECT_EQ(valueOf(KEY + "\"B\"=hex:01,\\\r\n\"V\"=dword:2"), "4: 02 00 00 00");
    for (const std::string& file : {std::string("\xFF\xFE["), "\"V\"=dword:1\n" + KEY})
        EXPECT_EQ(valueOf(file), "-");
    EXPECT_TRUE(host::Registry::fromText(KEY).hasKey(u"HKEY_LOCAL_MACHINE\\K"));
}

TEST(RegistryFile, AppliesLinesThatRemoveKeysAndValues) {
    const std::string both = HEADER + KEY + "\"V\"=dword:1\r\n\"B\"=dword:1\r\n";
    EXPECT_EQ(valueOf(both + "\"v\" = - ; gone"), "-");
    EXPECT_EQ(valueOf(both + "\"V\"=-", u"B"), "4: 01 00 00 00");
    for (const char* const line : {"[-HKEY_LOCAL_MACHINE\\K]", "[-hkey_local_machine] ; all"}) {
        const std::string file = both + line + "\r\n\"V\"=dword:2\r\n";
        EXPECT_EQ(valueOf(file), "-");
        EXPECT_FALSE(host::Registry::fromText(file).hasKey(u"HKEY_LOCAL_MACHINE\\K"));
        EXPECT_EQ(valueOf(file + KEY + "\"V\"=dword:2"), "4: 02 00 00 00");
        EXPECT_EQ(valueOf(file + KEY + "\"V\"=dword:2", u"B"), "-");
    }
}

TEST(RegistryFile, RewritesOnlyTheLinesOfChangedValues) {
    const std::string start = HEADER + "; of Ann\r\n[HKEY_LOCAL_MACHINE\\K]\r\n";
    const std::string odd = "\"Odd\"=qword:7\r\n\r\n; the units\r\n";
    const std::string before = start + "\"Num\" = dword:1 ; metric\n\"Gone\"=dword:1\r\n" + odd +
                               "\"Zone\"=hex:01,\\\r\n  02\r\n\"gone\"=-\r\n\r\n; the end";
    const std::string after =
        start + "\"Num\"=dword:0000001f ; metric\r\n\"Gone\"=dword:1\r\n" + odd +
        "\"Zone\"=hex:00,ff\r\n\"gone\"=-\r\n" +
        "\"Gone\"=hex(2):41,00\r\n\"Q\\\"\\\\\"=\"a\\\\ \xC4\x80\"\r\n\"E\"=\"\"\r\n" +
        "\r\n; the end\r\n\r\n[HKEY_LOCAL_MACHINE\\L]\r\n@=hex(4):01\r\n";
    const std::u16string key = u"hkey_local_machine\\K";
    using Encoding = std::string (*)(const std::string&);
    const Encoding utf8 = [](const std::string& text) { return text; };
    for (const Encoding encode : {utf8, Encoding(asUtf16), Encoding(asUtf16BigEndian)}) {
        host::Registry registry = host::Registry::fromText(encode(before));
        registry.set(key, u"num", {REG_DWORD, {31, 0, 0, 0}});
        registry.set(key, u"ZONE", {REG_BINARY, {0, 255}});
        registry.set(key, u"Gone", {2, {0x41, 0}});
        registry.set(key, u"Q\"\\", {REG_SZ, {'a', 0, '\\', 0, ' ', 0, 0, 1, 0, 0}});
        registry.set(key, u"E", {REG_SZ, {0, 0}});
        registry.set(u"HKEY_LOCAL_MACHINE\\L", u"", {REG_DWORD, {1}});
        EXPECT_EQ(registry.toText(), encode(after));
    }
}

TEST(RegistryFile, IsReplacedAtomically) {
    const DeviceFolder device;
    device.write("registry.reg", HEADER + KEY + "\"V\"=dword:00000001\r\n");
    struct stat before {};
    ASSERT_EQ(::stat((device.root() / "registry.reg").c_str(), &before), 0);

    // A leftover of a run that was killed, or a link planted to redirect the write.
    std::filesystem::create_symlink("a file of the host", device.root() / "registry.reg.new");
    host::Registry registry;
    EXPECT_EQ(host::loadRegistry(registry), DWORD{0});
    registry.set(u"hkey_local_machine\\k", u"v", {REG_DWORD, {2, 0, 0, 0}});
    EXPECT_EQ(host::saveRegistry(registry), DWORD{0});
    struct stat after {};
    ASSERT_EQ(::stat((device.root() / "registry.reg").c_str(), &after), 0);
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(device.tree(), (Tree{{"registry.reg", HEADER + KEY + "\"V\"=dword:00000002\r\n"}}));
}

// A registry file that exists but cannot be read is not treated as empty and not replaced.
TEST(RegistryFile, IsNotReplacedWhenItCannotBeRead) {
    const DeviceFolder device;
    const std::filesystem::path file = device.root() / "registry.reg";
    std::filesystem::create_symlink("registry.reg", file);
    HKEY key{};
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"K", 0, KEY_READ, &key), 5);
    const TIME_ZONE_INFORMATION zone{};
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(SetTimeZoneInformation(&zone));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "registry.reg cannot be read: Too many levels of symbolic links\n");
    EXPECT_TRUE(std::filesystem::is_symlink(file));

    // A missing file is created.
    std::filesystem::remove(file);
    EXPECT_TRUE(SetTimeZoneInformation(&zone));
    std::filesystem::remove(file);
    device.makeFolder("registry.reg/in the way");
    EXPECT_NE(host::saveRegistry(host::Registry()), DWORD{0});
    EXPECT_FALSE(device.exists("registry.reg.new"));
}

}  // namespace
