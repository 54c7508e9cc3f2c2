// Tests that no missing, overlong or out-of-range registry value selects a wrong language or
// overflows a buffer.

#include "support/system_config.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "support/languages.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/text.h"
#include "tests/helpers/bytes.h"
#include "tests/helpers/log_text.h"

namespace {

class Config : public ::testing::Test {
  protected:
    void SetUp() override { Logger::instance().setPath("/log.txt"); }

    // Stores a value as another program might; the key must exist.
    static void store(const WideString& name, DWORD type, const std::string& bytes) {
        HKEY key{};
        ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, widen(CONFIG_KEY).c_str(), 0, KEY_WRITE, &key),
                  0);
        // Desktop Windows appends a terminator when the byte after the value's size is 0.
        const std::string guarded = bytes + "xxx";
        RegSetValueExW(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                       static_cast<DWORD>(bytes.size()));
        RegCloseKey(key);
    }
    // Returns the messages since the last call.
    std::string logged() const {
        const std::string messages = logMessages(device, "log.txt");
        Logger::instance().open();
        return messages;
    }

    static std::string warningAbout(const WideString& name) {
        return "  ** Warning ** Error getting registry key [" + narrow(name) + "].\n";
    }

    DeviceFolder device;
    SystemConfig& config = SystemConfig::instance();
};

TEST_F(Config, NumbersAreStoredUncheckedAndReadInRange) {
    device.setLanguage(2);
    store(LANGUAGE, REG_BINARY, std::string("\3\0\0\0", 4));  // the type is not asked for
    EXPECT_EQ(config.getLanguage(), 3);
    store(LANGUAGE, REG_BINARY, std::string("\1\0\0\0\0", 5));  // longer than a number
    struct Case {
        int32_t (SystemConfig::*get)();
        void (SystemConfig::*set)(int32_t);
        const WideString& name;
        int32_t lowest;
        int32_t highest;
    };
    const Case cases[] = {
        {&SystemConfig::getLanguage, &SystemConfig::setLanguage, LANGUAGE, 0, LANGUAGE_COUNT - 1},
        {&SystemConfig::getSystemUnits, &SystemConfig::setSystemUnits, SYSTEM_UNITS, 0, 1},
        {&SystemConfig::getLastAppMode, &SystemConfig::setLastAppMode, LAST_APP_MODE, 0, 5},
        {&SystemConfig::getDisplayTheme, &SystemConfig::setDisplayTheme, DISPLAY_THEME, 0, 7},
        {&SystemConfig::getTimeZone, &SystemConfig::setTimeZone, TIME_ZONE, -12, 13},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(narrow(test.name));
        EXPECT_EQ(std::invoke(test.get, config), test.name == TIME_ZONE ? -1 : 0);
        EXPECT_EQ(logged(), warningAbout(test.name));
        for (const int32_t value :
             {test.lowest, test.highest, test.lowest - 1, test.highest + 1, INT32_MIN, INT32_MAX}) {
            std::invoke(test.set, config, value);
            const bool inRange = value >= test.lowest && value <= test.highest;
            EXPECT_EQ(std::invoke(test.get, config), inRange ? value : 0);
            EXPECT_EQ(config.getDword(test.name), value);
        }
    }
    EXPECT_EQ(logged(), "");
}

TEST_F(Config, TextsSurviveARoundTrip) {
    device.setLanguage(0);
    using Get = std::string (SystemConfig::*)();
    using Set = void (SystemConfig::*)(const std::string&);
    const std::pair<Get, Set> cases[] = {
        {&SystemConfig::getWifiNetworkName, &SystemConfig::setWifiNetworkName},
        {&SystemConfig::getWindowsHostName, &SystemConfig::setWindowsHostName},
        {&SystemConfig::getWindowsDomainName, &SystemConfig::setWindowsDomainName},
        {&SystemConfig::getWindowsUserName, &SystemConfig::setWindowsUserName},
    };
    EXPECT_EQ(config.getWindowsHostName(), "");
    EXPECT_EQ(logged(), warningAbout(WINDOWS_HOST_NAME));
    std::string text = "a \"b\" \\ caf\xE9 \xFF";
    for (const auto& [get, set] : cases) {
        for (const std::string& value : {text += "x", std::string(511, 'x'), std::string()}) {
            std::invoke(set, config, value);
            EXPECT_EQ(std::invoke(get, config), value);
        }
    }
    EXPECT_EQ(logged(), "");
    config.setWindowsHostName(std::string(512, 'x'));
    EXPECT_EQ(config.getWindowsHostName(), "");
    EXPECT_EQ(logged(), warningAbout(WINDOWS_HOST_NAME));
}

TEST_F(Config, TextsOfOtherProgramsDoNotOverflow) {
    device.setLanguage(0);
    const std::pair<std::string, std::string> cases[] = {
        {utf16Bytes(WideString(512, TEXT('x'))), std::string(512, 'x')},
        {utf16Bytes(TEXT("no end")), "no end"},
        {utf16Bytes(WideString(TEXT("a\0b"), 3)), "a"},
        {"", ""},
        {std::string("\xE5\0\xAC\x20\0\0", 6), "\xE5?"},
    };
    for (const auto& [bytes, text] : cases) {
        store(WINDOWS_USER_NAME, REG_SZ, bytes);
        EXPECT_EQ(config.getWindowsUserName(), text);
    }
}

}  // namespace
