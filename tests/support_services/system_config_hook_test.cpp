// The configuration store when registry calls fail, and the order in which it makes them.

#include <gtest/gtest.h>

#include "platform/posix/call_hook.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/system_config.h"
#include "tests/support/log_text.h"

namespace {

class ConfigCalls : public ::testing::Test {
  protected:
    void SetUp() override {
        Logger::instance().setPath("/log.txt");
        device.setLanguage(4);
    }
    // Runs `operation` while the call of this name fails; returns the registry calls.
    template <class Operation>
    std::vector<std::string> callsWhen(const std::string& failing, Operation operation) {
        std::vector<std::string> calls;
        Logger::instance().open();
        setCallHook([&](const HookedCall& call) {
            const std::string name = call.name;
            if (name.rfind("Reg", 0) == 0)
                calls.push_back(name);
            return name == failing ? DWORD{5} : DWORD{0};
        });
        operation();
        setCallHook({});
        return calls;
    }
    std::string logged() const { return logMessages(device, "log.txt"); }

    DeviceFolder device;
    SystemConfig& config = SystemConfig::instance();
};

using Calls = std::vector<std::string>;

TEST_F(ConfigCalls, EveryOperationOpensAndClosesTheKey) {
    EXPECT_EQ(callsWhen("", [&] { config.getLanguage(); }),
              (Calls{"RegOpenKeyExW", "RegQueryValueExW", "RegCloseKey"}));
    EXPECT_EQ(callsWhen("", [&] { config.getWindowsUserName(); }),
              (Calls{"RegOpenKeyExW", "RegQueryValueExW", "RegCloseKey"}));
    const Calls writing = {"RegOpenKeyExW", "RegSetValueExW", "RegCloseKey", "RegFlushKey"};
    EXPECT_EQ(callsWhen("", [&] { config.setLanguage(1); }), writing);
    EXPECT_EQ(callsWhen("", [&] { config.setWindowsUserName("u"); }), writing);
    EXPECT_EQ(logged(), "");
}

TEST_F(ConfigCalls, AKeyThatCannotBeOpenedIsNoMatter) {
    EXPECT_EQ(callsWhen("RegOpenKeyExW", [&] { EXPECT_EQ(config.getDword(LANGUAGE), -1); }),
              Calls{"RegOpenKeyExW"});
    EXPECT_EQ(callsWhen("RegOpenKeyExW", [&] { config.setLanguage(1); }), Calls{"RegOpenKeyExW"});
    EXPECT_EQ(logged(), "");
}

TEST_F(ConfigCalls, FailuresBehindTheOpenAreWarnings) {
    callsWhen("RegQueryValueExW", [&] { EXPECT_EQ(config.getDword(LANGUAGE), -1); });
    EXPECT_EQ(logged(), "  ** Warning ** Error getting registry key [LANGUAGE].\n");
    const Calls writing = {"RegOpenKeyExW", "RegSetValueExW", "RegCloseKey", "RegFlushKey"};
    EXPECT_EQ(callsWhen("RegSetValueExW", [&] { config.setLanguage(1); }), writing);
    EXPECT_EQ(logged(), "  ** Warning ** Error setting registry key [LANGUAGE].\n");
    callsWhen("RegFlushKey", [&] { config.setLanguage(1); });
    EXPECT_EQ(logged(), "");
}

TEST_F(ConfigCalls, AFailedCloseIsAWarningAndSpoilsNothing) {
    callsWhen("RegCloseKey", [&] { EXPECT_EQ(config.getLanguage(), 4); });
    EXPECT_EQ(logged(), "  ** Warning ** Error closing registry key [LANGUAGE].\n");
    callsWhen("RegCloseKey", [&] { config.getWindowsUserName(); });
    EXPECT_EQ(logged(),
              "  ** Warning ** Error getting registry key [WINDOWS_USER_NAME].\n"
              "  ** Warning ** Error closing registry key [WINDOWS_USER_NAME].\n");
    // Setters speak of setting.
    callsWhen("RegCloseKey", [&] { config.setLanguage(1); });
    EXPECT_EQ(logged(), "  ** Warning ** Error setting registry key [LANGUAGE].\n");
    EXPECT_EQ(config.getLanguage(), 1);
}

}  // namespace
