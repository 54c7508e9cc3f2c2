// The configuration store when registry calls fail, and the order in which it makes them.

#include <gtest/gtest.h>

#include <functional>

#include "platform/posix/call_hook.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/system_config.h"
#include "tests/support/log_text.h"

namespace {

using Calls = std::vector<std::string>;

TEST(ConfigCalls, AreMadeInOrderAndWarnWhenTheyFailBehindTheOpen) {
    const DeviceFolder device;
    SystemConfig& config = SystemConfig::instance();
    const auto number = [&] { return std::to_string(config.getDword(LANGUAGE)); };
    const auto setNumber = [&] {
        config.setLanguage(1);
        return std::string();
    };
    const Calls open = {"RegOpenKeyExW"};
    const Calls reading = {"RegOpenKeyExW", "RegQueryValueExW", "RegCloseKey"};
    const Calls writing = {"RegOpenKeyExW", "RegSetValueExW", "RegCloseKey", "RegFlushKey"};
    const std::string noNumber = "  ** Warning ** Error getting registry key [LANGUAGE].\n";
    // Setters speak of setting, whatever failed.
    const std::string notSet = "  ** Warning ** Error setting registry key [LANGUAGE].\n";

    struct Case {
        const char* failing;
        std::function<std::string()> operation;
        std::string result;
        Calls calls;
        std::string logged;
    };
    const Case cases[] = {
        {"", number, "4", reading, ""},
        {"RegOpenKeyExW", number, "-1", open, ""},
        {"RegOpenKeyExW", setNumber, "", open, ""},
        {"RegQueryValueExW", number, "-1", reading, noNumber},
        {"RegCloseKey", number, "4", reading,
         "  ** Warning ** Error closing registry key [LANGUAGE].\n"},
        {"", setNumber, "", writing, ""},
        {"RegSetValueExW", setNumber, "", writing, notSet},
        {"RegFlushKey", setNumber, "", writing, ""},
        {"RegCloseKey", setNumber, "", writing, notSet},
    };
    Logger::instance().setPath("/log.txt");
    device.setLanguage(4);
    for (const Case& test : cases) {
        SCOPED_TRACE(test.failing);
        Calls calls;
        Logger::instance().open();
        setCallHook([&](const HookedCall& call) {
            const std::string name = call.name;
            if (name.rfind("Reg", 0) == 0)
                calls.push_back(name);
            return name == test.failing ? DWORD{5} : DWORD{0};
        });
        EXPECT_EQ(test.operation(), test.result);
        setCallHook({});
        EXPECT_EQ(calls, test.calls);
        EXPECT_EQ(logMessages(device, "log.txt"), test.logged);
    }
    EXPECT_EQ(config.getLanguage(), 1);
    config.setWindowsUserName("u");
    // A text without its end would stand there in hexadecimal.
    EXPECT_NE(device.read("registry.reg").find("\"WINDOWS_USER_NAME\"=\"u\""), std::string::npos);
}

}  // namespace
