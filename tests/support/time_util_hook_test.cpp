// Setting the time zone, which belongs to the simulated device alone.

#include <gtest/gtest.h>

#include "platform/posix/call_hook.h"
#include "platform/posix/clock.h"
#include "support/time_util.h"
#include "tests/helpers/device_folder.h"

namespace {

TEST(SetTimeZone, ChangesTheBiasAndKeepsTheRest) {
    const DeviceFolder device;
    TIME_ZONE_INFORMATION zone{};
    zone.StandardName[0] = u'S';
    zone.StandardDate.wMonth = 10;
    zone.DaylightName[31] = u'D';
    zone.DaylightBias = -60;
    ASSERT_TRUE(SetTimeZoneInformation(&zone));
    const std::pair<int32_t, LONG> cases[] = {{-5, 300}, {13, -780}, {0, 0}};
    for (const auto& [hours, bias] : cases) {
        setTimeZone(hours);
        host::forgetTimeZone();
        TIME_ZONE_INFORMATION stored{};
        GetTimeZoneInformation(&stored);
        EXPECT_EQ(stored.Bias, bias);
        EXPECT_EQ(stored.StandardName[0], u'S');
        EXPECT_EQ(stored.StandardDate.wMonth, 10);
        EXPECT_EQ(stored.DaylightName[31], u'D');
        EXPECT_EQ(stored.DaylightBias, -60);
    }
    setTimeZone(INT32_MIN);
    setTimeZone(INT32_MAX);
}

TEST(SetTimeZone, ReportsFailuresOnTheStandardOutputAndCarriesOn) {
    const DeviceFolder device;
    std::vector<std::string> calls;
    setCallHook([&](const HookedCall& call) {
        calls.emplace_back(call.name);
        return calls.size() == 1 ? DWORD{31} : DWORD{5};
    });
    ::testing::internal::CaptureStdout();
    setTimeZone(2);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "GTZI failed (31)\nSTZI failed (5)\n");
    EXPECT_EQ(calls,
              (std::vector<std::string>{"GetTimeZoneInformation", "SetTimeZoneInformation"}));
}

}  // namespace
