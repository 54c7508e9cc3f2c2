// Tests that times are formatted as in existing logs, and that elapsed time never decreases.

#include "support/time_util.h"

#include <gtest/gtest.h>

namespace {

TEST(FormatTime, PadsTheMinuteOnly) {
    const std::pair<SYSTEMTIME, const char*> cases[] = {
        {{2016, 3, 1, 7, 9, 5, 59, 999}, "2016/3/7 9:05"},
        {{2016, 12, 6, 31, 23, 10, 0, 0}, "2016/12/31 23:10"},
        {{65535, 65535, 0, 65535, 65535, 65535, 0, 0}, "65535/65535/65535 65535:65535"},
    };
    for (const auto& [time, text] : cases)
        EXPECT_EQ(formatTime(time), text);
}

TEST(ElapsedTime, GrowsAndRestarts) {
    const Timer around;
    Timer timer;
    Sleep(20);
    const double seconds = timer.elapsedSeconds();
    const double milliseconds = timer.elapsedMilliseconds();
    EXPECT_GE(milliseconds, seconds * 1000.0);
    EXPECT_LE(milliseconds, around.elapsedSeconds() * 1000.0);
    const Timer whole = timer;
    timer.reset();
    const double sinceReset = timer.elapsedSeconds();
    EXPECT_LT(sinceReset, whole.elapsedSeconds());
}

}  // namespace
