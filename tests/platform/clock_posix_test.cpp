// Whether a file's time can be out of range, and whether the device's time zone touches the host's.

#include "platform/posix/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <vector>

#include "platform/posix/device.h"
#include "tests/helpers/device_folder.h"

namespace {

class Clock : public ::testing::Test {
  protected:
    void setBias(LONG minutes) {
        TIME_ZONE_INFORMATION zone{};
        GetTimeZoneInformation(&zone);
        zone.Bias = minutes;
        ASSERT_TRUE(SetTimeZoneInformation(&zone));
        host::forgetTimeZone();
    }

    static LONG bias() {
        TIME_ZONE_INFORMATION zone{};
        EXPECT_LE(GetTimeZoneInformation(&zone), DWORD{2});
        return zone.Bias;
    }

    DeviceFolder device;
};

TEST_F(Clock, NoTimeIsOutOfRange) {
    using Seconds = std::numeric_limits<std::time_t>;
    setBias(-14 * 60);
    SYSTEMTIME calendar{};
    for (const std::time_t seconds : {Seconds::min(), std::time_t{0}, Seconds::max()}) {
        const FILETIME time = host::fileTime({seconds, 999'999'999});
        FILETIME local{};
        EXPECT_TRUE(FileTimeToLocalFileTime(&time, &local));
        EXPECT_TRUE(FileTimeToSystemTime(&local, &calendar));
    }
    const FILETIME last{0xFFFFFFFF, 0x7FFFFFFF};
    FILETIME local{};
    EXPECT_TRUE(FileTimeToLocalFileTime(&last, &local));
    const FILETIME first{0, 0};
    ASSERT_TRUE(FileTimeToSystemTime(&first, &calendar));
    EXPECT_EQ(calendar.wYear, 1601);
    const FILETIME beyond{0, 0x80000000};
    EXPECT_FALSE(FileTimeToSystemTime(&beyond, &calendar));
    EXPECT_EQ(GetLastError(), DWORD{87});
}

TEST_F(Clock, TheZoneIsTheDevicesAndShiftsItsTimes) {
    ::setenv("TZ", "XYZ-3", 1);
    ::tzset();
    host::forgetTimeZone();
    EXPECT_EQ(bias(), -180);

    device.setLanguage(5);
    setBias(90);
    EXPECT_EQ(bias(), 90);
    EXPECT_NE(device.read("registry.reg").find("\"LANGUAGE\"=dword:5"), std::string::npos);
    const FILETIME time = host::fileTime({1'457'341'500, 250'000'000});
    FILETIME local{};
    SYSTEMTIME calendar{};
    ASSERT_TRUE(FileTimeToLocalFileTime(&time, &local));
    ASSERT_TRUE(FileTimeToSystemTime(&local, &calendar));
    const std::vector<WORD> fields = {calendar.wYear,        calendar.wMonth, calendar.wDay,
                                      calendar.wDayOfWeek,   calendar.wHour,  calendar.wMinute,
                                      calendar.wMilliseconds};
    EXPECT_EQ(fields, (std::vector<WORD>{2016, 3, 7, 1, 7, 35, 250}));

    // Neither the environment nor another device knows of it.
    EXPECT_STREQ(std::getenv("TZ"), "XYZ-3");
    const DeviceFolder other;
    EXPECT_EQ(bias(), -180);
    ::unsetenv("TZ");
    ::tzset();
    host::forgetTimeZone();
}

}  // namespace
