#include "support/time_util.h"

#include <cstdio>

std::string formatTime(SYSTEMTIME time) {
    std::string minute = std::to_string(time.wMinute);
    if (minute.size() < 2)
        minute.insert(0, "0");
    return std::to_string(time.wYear) + "/" + std::to_string(time.wMonth) + "/" +
           std::to_string(time.wDay) + " " + std::to_string(time.wHour) + ":" + minute;
}

Timer::Timer() {
    reset();
}

void Timer::reset() {
    LARGE_INTEGER frequency{};
    LARGE_INTEGER start{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    secondsPerTick_ = 1.0 / static_cast<double>(frequency.QuadPart);
    start_ = start.QuadPart;
}

double Timer::elapsedSeconds() const {
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart - start_) * secondsPerTick_;
}

double Timer::elapsedMilliseconds() const {
    return elapsedSeconds() * 1000.0;
}

void setTimeZone(int32_t hours) {
    constexpr DWORD HIGHEST_ZONE_ID = 2;
    constexpr LONG MINUTES_PER_HOUR = 60;
    TIME_ZONE_INFORMATION current{};
    if (GetTimeZoneInformation(&current) > HIGHEST_ZONE_ID)
        std::printf("GTZI failed (%d)\n", static_cast<int>(GetLastError()));
    TIME_ZONE_INFORMATION zone = current;
    zone.Bias = static_cast<LONG>(int64_t{hours} * -MINUTES_PER_HOUR);
    if (!SetTimeZoneInformation(&zone))
        std::printf("STZI failed (%d)\n", static_cast<int>(GetLastError()));
}
