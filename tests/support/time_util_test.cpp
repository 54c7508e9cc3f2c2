// The text form of a time, and elapsed time.

#include "support/time_util.h"

#include <gtest/gtest.h>

namespace {

TEST(FormatTime, PadsTheMinuteOnly) {
    struct Case {
        SYSTEMTIME time;
        const char* text;
    };
    const Case cases[] = {
        {{2016, 3, 1, 7, 9, 5, 59, 999}, "2016/3/7 9:05"},
        {{2016, 12, 6, 31, 23, 0, 0, 0}, "2016/12/31 23:00"},
        {{2016, 1, 6, 2, 3, 4, 0, 0}, "2016/1/2 3:04"},
        {{1601, 1, 1, 1, 0, 10, 0, 0}, "1601/1/1 0:10"},
        {{0, 0, 0, 0, 0, 0, 0, 0}, "0/0/0 0:00"},
        {{65535, 65535, 0, 65535, 65535, 65535, 0, 0}, "65535/65535/65535 65535:65535"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(formatTime(test.time), test.text);
}

TEST(ElapsedTime, GrowsAndStartsAgain) {
    Timer timer;
    Sleep(20);
    const double seconds = timer.elapsedSeconds();
    EXPECT_GE(seconds, 0.005);
    EXPECT_GE(timer.elapsedMilliseconds(), seconds * 1000.0);
    const Timer whole = timer;
    timer.reset();
    EXPECT_LT(timer.elapsedSeconds(), whole.elapsedSeconds());
}

}  // namespace
