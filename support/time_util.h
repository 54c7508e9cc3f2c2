// Text form of a local time, elapsed time, and the device's time zone.
#pragma once

#include <cstdint>
#include <string>

#include "platform/win32.h"

// "2016/3/7 9:05": only the minute is padded; no seconds.
std::string formatTime(SYSTEMTIME time);

// Time since a start, by the system's performance counter.
class Timer {
  public:
    // Starts now.
    Timer();
    virtual ~Timer() = default;

    // Starts again.
    void reset();

    double elapsedSeconds() const;
    double elapsedMilliseconds() const;

  private:
    double secondsPerTick_ = 0;
    int64_t start_ = 0;
};

// Sets the device's offset from UTC, in whole hours; names and daylight-saving rules stay. Failures
// go to the standard output.
void setTimeZone(int32_t hours);
