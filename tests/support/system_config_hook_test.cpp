// Whether a registry that refuses is noticed: a wrong fallback shows the wrong language, a lost
// warning leaves the service desk without a trace.

#include <gtest/gtest.h>

#include <functional>

#include "platform/posix/call_hook.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/system_config.h"
#include "tests/helpers/log_text.h"

namespace {

TEST(ConfigCalls, WarnWhenTheyFailBehindTheOpen) {
    const DeviceFolder device;
    SystemConfig& config = SystemConfig::instance();
    const auto get = [&] { return config.getDword(LANGUAGE); };
    const auto set = [&] {
        config.setLanguage(1);
        return 0;
    };
    // Setters speak of setting, whatever failed.
    struct Case {
        const char* failing;
        std::function<int32_t()> operation;
        int32_t result;
        const char* logged;
    };
    const Case cases[] = {
        {"", get, 4, ""},
        {"RegOpenKeyExW", get, -1, ""},
        {"RegQueryValueExW", get, -1, "getting"},
        {"RegCloseKey", get, 4, "closing"},
        {"RegOpenKeyExW", set, 0, ""},
        {"RegSetValueExW", set, 0, "setting"},
        {"RegCloseKey", set, 0, "setting"},
        {"RegFlushKey", set, 0, ""},
    };
    Logger::instance().setPath("/log.txt");
    device.setLanguage(4);
    std::string last;
    for (const Case& test : cases) {
        SCOPED_TRACE(test.failing);
        Logger::instance().open();
        setCallHook([&](const HookedCall& call) {
            const bool ofRegistry = std::string(call.name).rfind("Reg", 0) == 0;
            last = ofRegistry ? call.name : last;
            return std::string(call.name) == test.failing ? DWORD{5} : DWORD{0};
        });
        EXPECT_EQ(test.operation(), test.result);
        const std::string warning = std::string("  ** Warning ** Error ") + test.logged;
        const std::string expected =
            *test.logged == '\0' ? "" : warning + " registry key [LANGUAGE].\n";
        EXPECT_EQ(logMessages(device, "log.txt"), expected);
    }
    EXPECT_EQ(last, "RegFlushKey");
    setCallHook({});
    EXPECT_EQ(config.getLanguage(), 1);
    config.setWindowsUserName("u");
    // A text without its end would stand there in hexadecimal.
    EXPECT_NE(device.read("registry.reg").find("\"WINDOWS_USER_NAME\"=\"u\""), std::string::npos);
}

}  // namespace
