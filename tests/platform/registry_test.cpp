// Tests that the registry, which holds the instrument's language and time zone, returns what was
// stored and fails with the error numbers of Windows.

#include <gtest/gtest.h>

#include <cstring>

#include "platform/win32.h"
#include "support/text.h"
#include "tests/helpers/device_folder.h"

namespace {

const WideString KEY = widen(CONFIG_KEY);

struct Queried {
    LSTATUS result = 0;
    DWORD type = 0;
    DWORD size = 0;
    std::string bytes;
};

Queried query(HKEY key, LPCWSTR name, DWORD room) {
    BYTE data[64] = {};
    Queried queried;
    queried.size = room;
    queried.result = RegQueryValueExW(key, name, nullptr, &queried.type, data, &queried.size);
    if (queried.result == 0)
        queried.bytes.assign(reinterpret_cast<const char*>(data), queried.size);
    return queried;
}

// Desktop Windows appends a terminator when the byte after the value's size is 0; the guard bytes
// prevent that.
LSTATUS set(HKEY key, LPCWSTR name, DWORD type, const std::string& bytes) {
    const std::string guarded = bytes + "\x7F\x7F\x7F";
    return RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                          static_cast<DWORD>(bytes.size()));
}

TEST(Registry, FailsWithWindowsErrorNumbers) {
    const DeviceFolder device;
    HKEY key{};
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, KEY.c_str(), 0, KEY_READ, &key), 2);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, KEY.c_str(), 0, KEY_WRITE, &key), 2);
    device.setLanguage(1);
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("software\\veld\\Kestrel\\system_config"), 0,
                            KEY_READ, &key),
              0);
    EXPECT_EQ(query(key, TEXT("ABSENT"), 64).result, 2);
    EXPECT_EQ(query(key, TEXT("LANGUAGE"), 3).result, 234);
    EXPECT_EQ(query(key, TEXT("LANGUAGE"), 3).size, DWORD{4});
    EXPECT_EQ(set(key, TEXT("LANGUAGE"), REG_DWORD, "1234"), 5);
    EXPECT_EQ(query(key, TEXT("Language"), 4).bytes, std::string("\1\0\0\0", 4));
    EXPECT_EQ(RegCloseKey(key), 0);
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\VELD"), 0, KEY_READ, &key), 0);
    EXPECT_EQ(query(key, TEXT("LANGUAGE"), 4).result, 2);
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\VELD\\KESTREL\\SYSTEM"), 0,
                            KEY_READ, &key),
              2);
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), 0);
    EXPECT_EQ(RegFlushKey(HKEY_LOCAL_MACHINE), 0);
}

TEST(Registry, ReturnsStoredValues) {
    const DeviceFolder device;
    device.setLanguage(1);
    HKEY key{};
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, KEY.c_str(), 0, KEY_READ | KEY_WRITE, &key), 0);

    struct Case {
        DWORD type;
        std::string bytes;
    };
    const std::string text = std::string("a\0\"\0\\\0\xE9\0\xAC\x20\0\0", 12);
    const Case cases[] = {
        {REG_DWORD, std::string("\xFF\0\x80\x01", 4)},
        {REG_SZ, text},
        {REG_SZ, text.substr(0, 10)},
        {REG_SZ, text.substr(0, 1)},
        {REG_SZ, std::string("\0\0", 2)},
        {REG_SZ, ""},
        {REG_SZ, std::string("\n\0=\0\r\0\0\0", 8)},
        {REG_BINARY, std::string("\0\x10\xFF", 3)},
        {REG_BINARY, ""},
        {2, std::string("%\0\0\0", 4)},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(::testing::PrintToString(test.bytes));
        EXPECT_EQ(set(key, TEXT("Some \"value\"="), test.type, test.bytes), 0);
        const Queried queried = query(key, TEXT("SOME \"VALUE\"="), 64);
        EXPECT_EQ(queried.result, 0);
        EXPECT_EQ(queried.type, test.type);
        EXPECT_EQ(queried.bytes, test.bytes);
    }
    EXPECT_EQ(query(key, TEXT("LANGUAGE"), 4).bytes, std::string("\1\0\0\0", 4));
    EXPECT_EQ(RegCloseKey(key), 0);
}

}  // namespace
