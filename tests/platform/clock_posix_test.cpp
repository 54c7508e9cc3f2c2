// Times in the terms of Windows, and the time zone that belongs to the device.

#include "platform/posix/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

#include "platform/posix/device.h"
#include "tests/support/device_folder.h"

namespace {

class Clock : public ::testing::Test {
  protected:
    void setBias(LONG minutes) {
        TIME_ZONE_INFORMATION zone{};
        GetTimeZoneInformation(&zone);
        zone.Bias = minutes;
        ASSERT_TRUE(SetTimeZoneInformation(&zone));
    }

    DeviceFolder device;
};

TEST_F(Clock, CalendarTimesOfFileTimes) {
    FILETIME time = host::fileTime({1'457'341'500, 250'000'000});
    SYSTEMTIME calendar{};
    ASSERT_TRUE(FileTimeToSystemTime(&time, &calendar));
    EXPECT_EQ(calendar.wYear, 2016);
    EXPECT_EQ(calendar.wMonth, 3);
    EXPECT_EQ(calendar.wDay, 7);
    EXPECT_EQ(calendar.wDayOfWeek, 1);
    EXPECT_EQ(calendar.wHour, 9);
    EXPECT_EQ(calendar.wMinute, 5);
    EXPECT_EQ(calendar.wMilliseconds, 250);

    time = {0, 0};
    ASSERT_TRUE(FileTimeToSystemTime(&time, &calendar));
    EXPECT_EQ(calendar.wYear, 1601);
    time = {0, 0x80000000};
    EXPECT_FALSE(FileTimeToSystemTime(&time, &calendar));
    EXPECT_EQ(GetLastError(), DWORD{87});
}

TEST_F(Clock, NoTimeIsOutOfRange) {
    using Seconds = std::numeric_limits<std::time_t>;
    setBias(-14 * 60);
    for (const std::time_t seconds : {Seconds::min(), std::time_t{0}, Seconds::max()}) {
        const FILETIME time = host::fileTime({seconds, 999'999'999});
        FILETIME local{};
        SYSTEMTIME calendar{};
        EXPECT_TRUE(FileTimeToLocalFileTime(&time, &local));
        EXPECT_TRUE(FileTimeToSystemTime(&local, &calendar));
    }
    const FILETIME last{0xFFFFFFFF, 0x7FFFFFFF};
    FILETIME local{};
    EXPECT_TRUE(FileTimeToLocalFileTime(&last, &local));
}

TEST_F(Clock, TheZoneIsTheDevicesAndShiftsItsTimes) {
    ::setenv("TZ", "XYZ-3", 1);
    ::tzset();
    host::forgetTimeZone();
    TIME_ZONE_INFORMATION zone{};
    EXPECT_LE(GetTimeZoneInformation(&zone), DWORD{2});
    EXPECT_EQ(zone.Bias, -180);

    setBias(90);
    host::forgetTimeZone();
    GetTimeZoneInformation(&zone);
    EXPECT_EQ(zone.Bias, 90);
    const FILETIME time = host::fileTime({1'457'341'500, 0});
    FILETIME local{};
    SYSTEMTIME calendar{};
    ASSERT_TRUE(FileTimeToLocalFileTime(&time, &local));
    ASSERT_TRUE(FileTimeToSystemTime(&local, &calendar));
    EXPECT_EQ(calendar.wHour, 7);
    EXPECT_EQ(calendar.wMinute, 35);

    // Neither the environment nor another device knows of it.
    EXPECT_STREQ(std::getenv("TZ"), "XYZ-3");
    const DeviceFolder other;
    GetTimeZoneInformation(&zone);
    EXPECT_EQ(zone.Bias, -180);
    ::unsetenv("TZ");
    ::tzset();
    host::forgetTimeZone();
}

TEST_F(Clock, SettingTheZoneKeepsTheRestOfTheRegistry) {
    device.setLanguage(5);
    setBias(60);
    EXPECT_NE(device.read("registry.reg").find("\"LANGUAGE\"=dword:00000005"), std::string::npos);
}

}  // namespace
