// Local time as text, elapsed time, and the device's time zone. The instrument's programs share
// all of this; the updater itself uses only formatTime.
#pragma once

#include <cstdint>
#include <string>

#include "platform/win32.h"

// Formats a time as "2016/3/7 9:05". Only the minute is padded, and there are no seconds.
std::string formatTime(SYSTEMTIME time);

// A stopwatch on the system's performance counter.
class Timer {
  public:
    // Starts the stopwatch.
    Timer();
    virtual ~Timer() = default;

    // Restarts the stopwatch from 0.
    void reset();

    double elapsedSeconds() const;
    double elapsedMilliseconds() const;

  private:
    double secondsPerTick_ = 0;
    int64_t start_ = 0;
};

// Sets the device's offset from UTC, in whole hours, and keeps the zone's names and daylight-saving
// rules. Failures are printed to the standard output.
void setTimeZone(int32_t hours);
