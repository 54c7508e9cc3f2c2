// Tests that file times out of range are converted, and that setting the device's time zone neither
// changes this computer's nor loses other settings.

#include "platform/posix/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

#include "platform/posix/call_hook.h"
#include "support/time_util.h"
#include "tests/helpers/device_folder.h"

namespace {

TIME_ZONE_INFORMATION storedZone() {
    TIME_ZONE_INFORMATION zone{};
    EXPECT_LE(GetTimeZoneInformation(&zone), DWORD{2});
    return zone;
}

TEST(Clock, FileTimesOutOfRangeAreClamped) {
    const DeviceFolder device;
    setTimeZone(14);
    SYSTEMTIME calendar{};
    FILETIME local{};
    using Seconds = std::numeric_limits<std::time_t>;
    for (const std::time_t seconds : {Seconds::min(), std::time_t{0}, Seconds::max()}) {
        const FILETIME time = host::fileTime({seconds, 999'999'999});
        EXPECT_TRUE(FileTimeToLocalFileTime(&time, &local));
        EXPECT_TRUE(FileTimeToSystemTime(&local, &calendar));
    }
    EXPECT_EQ(formatTime(calendar), "30000/1/1 14:00");
    EXPECT_EQ(calendar.wSecond, 0);
}

TEST(Clock, TheTimeZoneIsStoredOnTheDeviceOnly) {
    const DeviceFolder device;
    ::setenv("TZ", "XYZ-3", 1);
    ::tzset();
    TIME_ZONE_INFORMATION zone = storedZone();
    EXPECT_EQ(zone.Bias, -180);

    device.setLanguage(5);
    zone.Bias = 90;
    zone.DaylightName[31] = u'D';
    zone.StandardBias = 5;
    zone.DaylightBias = -60;
    ASSERT_TRUE(SetTimeZoneInformation(&zone));
    EXPECT_EQ(storedZone().Bias, 90);
    EXPECT_NE(device.read("registry.reg").find("\"LANGUAGE\"=dword:00000005"), std::string::npos);
    const FILETIME time = host::fileTime({1'457'341'500, 999'000'000});
    FILETIME local{};
    SYSTEMTIME calendar{};
    ASSERT_TRUE(FileTimeToLocalFileTime(&time, &local));
    ASSERT_TRUE(FileTimeToSystemTime(&local, &calendar));
    EXPECT_EQ(formatTime(calendar), "2016/3/7 7:30");
    EXPECT_EQ(calendar.wDayOfWeek, 1);
    EXPECT_EQ(calendar.wMilliseconds, 999);

    // Hours east are stored as minutes west; everything else is unchanged.
    for (const int32_t hours : {-5, 13, 0}) {
        setTimeZone(hours);
        EXPECT_EQ(storedZone().Bias, hours * -60);
        EXPECT_EQ(storedZone().DaylightName[31], u'D');
        EXPECT_EQ(storedZone().DaylightBias, -60);
    }
    setTimeZone(INT32_MIN);
    // The environment and other devices are unaffected.
    EXPECT_STREQ(std::getenv("TZ"), "XYZ-3");
    const DeviceFolder other;
    GetTimeZoneInformation(&zone);
    EXPECT_EQ(zone.Bias, -180);
    ::unsetenv("TZ");
    ::tzset();
}

TEST(Clock, AFailedTimeZoneChangeIsPrinted) {
    const DeviceFolder device;
    setCallHook([](const HookedCall& call) {
        return std::string(call.name) == "GetTimeZoneInformation" ? DWORD{31} : DWORD{5};
    });
    ::testing::internal::CaptureStdout();
    setTimeZone(2);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "GTZI failed (31)\nSTZI failed (5)\n");
}

}  // namespace
