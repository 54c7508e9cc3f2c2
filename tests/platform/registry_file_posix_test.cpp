// The registry's text form: what is read of it, and how it is written.

#include "platform/posix/registry_file.h"

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

// Type and bytes of value "V" of key K: "1:41 00 00 00"; "-" when absent.
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

TEST(RegistryFile, ReadsEachFormOfValue) {
    struct Case {
        const char* line;
        const char* value;
    };
    const Case cases[] = {
        {"\"V\"=dword:0000001f", "4: 1f 00 00 00"},
        {"\"v\"=dword:FFFFFFF4", "4: f4 ff ff ff"},
        {"  \"V\" = dword:7  ", "4: 07 00 00 00"},
        {"\"V\"=\"a\"", "1: 61 00 00 00"},
        {"\"V\"=\"\"", "1: 00 00"},
        {"\"V\"=\"\\\\\\\"\"", "1: 5c 00 22 00 00 00"},
        {"\"V\"=\"\xE2\x82\xAC;#\"", "1: ac 20 3b 00 23 00 00 00"},
        {"\"V\"=hex:01,fF,0", "3: 01 ff 00"},
        {"\"V\"=hex:", "3:"},
        {"\"V\"=hex(2):41,00,00,00", "2: 41 00 00 00"},
        {"\"V\"=hex(0):", "0:"},
        {"\"V\"=hex:01,\\\r\n  02,\\\r\n  03\r\n", "3: 01 02 03"},
        {"\"V\"=hex:01,\\", "3: 01"},
        {"\"V\"=dword:1\r\n\"V\"=dword:2", "4: 02 00 00 00"},
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
    }
    EXPECT_EQ(valueOf(HEADER + KEY + "@=\"d\"", u""), "1: 64 00 00 00");
}

TEST(RegistryFile, PassesOverWhatItCannotRead) {
    const char* const lines[] = {
        "\"V=dword:1",
        "\"V\"=",
        "\"V\"=\"open",
        "\"V\"=\"ends in a backslash\\",
        "\"V\"=dword:",
        "\"V\"=dword:123456789",
        "\"V\"=hex(z):01",
        "\"V\"=hex:zz",
        "\"V\"=hex:01,,02",
        "; \"V\"=dword:1",
        "[",
        "[-HKEY_LOCAL_MACHINE\\K]\r\n\"V\"=dword:1",
        "[HKEY_LOCAL_MACHINE\\OTHER]\r\n\"V\"=dword:1",
        "",
    };
    for (const std::string line : lines) {
        SCOPED_TRACE(line);
        const std::string file = HEADER + KEY + "\"B\"=dword:1\r\n" + line + "\r\n";
        EXPECT_EQ(valueOf(file), "-");
        EXPECT_EQ(valueOf(file, u"B"), "4: 01 00 00 00");
        // It does not take what follows with it.
        EXPECT_EQ(valueOf(file + KEY + "\"V\"=dword:2"), "4: 02 00 00 00");
    }
    EXPECT_EQ(valueOf(KEY + "\"B\"=hex:01,\\\r\n\"V\"=dword:2"), "4: 02 00 00 00");
    for (const std::string& file : {std::string("\xFF\xFE["), "\"V\"=dword:1\n" + KEY})
        EXPECT_EQ(valueOf(file), "-");
}

TEST(RegistryFile, WritesTheFormThatItReads) {
    const std::string text = HEADER + KEY +
                             "@=\"default\"\r\n"
                             "\"Bin\"=hex:00,ff\r\n"
                             "\"Expand\"=hex(2):41,00\r\n"
                             "\"Num\"=dword:0000001f\r\n"
                             "\"Quote\\\"\\\\\"=\"a\\\\b \\\"c\\\" \xC3\xA9\"\r\n"
                             "\r\n[HKEY_LOCAL_MACHINE\\K\\Sub Key]\r\n";
    EXPECT_EQ(host::Registry::fromText(text).toText(), text);
    EXPECT_EQ(host::Registry::fromText(asUtf16(text)).toText(), asUtf16(text));
}

TEST(RegistryFile, IsReplacedAsAWhole) {
    const DeviceFolder device;
    device.write("registry.reg", HEADER + KEY + "\"V\"=dword:00000001\r\n");
    struct stat before {};
    ASSERT_EQ(::stat((device.root() / "registry.reg").c_str(), &before), 0);

    host::Registry registry = host::loadRegistry();
    registry.set(u"hkey_local_machine\\k", u"v", {REG_DWORD, {2, 0, 0, 0}});
    EXPECT_EQ(host::saveRegistry(registry), DWORD{0});
    struct stat after {};
    ASSERT_EQ(::stat((device.root() / "registry.reg").c_str(), &after), 0);
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(device.tree(), (Tree{{"registry.reg", HEADER + KEY + "\"v\"=dword:00000002\r\n"}}));

    std::filesystem::remove(device.root() / "registry.reg");
    device.makeFolder("registry.reg/in the way");
    EXPECT_EQ(host::loadRegistry().toText(), host::Registry().toText());
    EXPECT_NE(host::saveRegistry(registry), DWORD{0});
    EXPECT_FALSE(device.exists("registry.reg.new"));
}

}  // namespace
