// Tests that times are formatted as in existing logs, and that elapsed time never decreases.

#include "support/time_util.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

TEST(FormatTime, PadsTheMinuteOnly) {
    const std::pair<SYSTEMTIME, const char*> cases[] = {
        {{2016, 3, 1, 7, 9, 5, 59, 999}, "2016/3/7 9:05"},
        {{2016, 12, 6, 31, 23, 10, 0, 0}, "2016/12/31 23:10"},
    };
    for (const auto& [time, text] : cases)
        EXPECT_EQ(formatTime(time), text);
}

TEST(ElapsedTime, GrowsAndRestarts) {
    const auto start = std::chrono::steady_clock::now();
    Timer timer;
    Sleep(20);
    const double before = timer.elapsedSeconds();
    const double milliseconds = timer.elapsedMilliseconds();
    const double after = timer.elapsedSeconds();
    EXPECT_GE(milliseconds, before * 1000.0);
    EXPECT_LE(milliseconds, after * 1000.0);
    EXPECT_LE(after,
              std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    const Timer whole = timer;
    timer.reset();
    const double sinceReset = timer.elapsedSeconds();
    EXPECT_LT(sinceReset, whole.elapsedSeconds());
}

}  // namespace
