// Sleep, local time, the time zone and the performance counter.
//
// The device's time zone is stored in its registry. When the registry has none, the host's zone is
// used. The host's zone is never changed.

#include "platform/posix/clock.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <string>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/last_error.h"
#include "platform/posix/registry/registry_file.h"

namespace {

constexpr int64_t TICKS_PER_SECOND = 10'000'000;
constexpr int64_t NANOSECONDS_PER_TICK = 100;
constexpr int64_t SECONDS_1601_TO_1970 = 11'644'473'600;
constexpr int64_t SECONDS_PER_MINUTE = 60;
constexpr int64_t NANOSECONDS_PER_SECOND = 1'000'000'000;
// The year 30000, which FILETIME and SYSTEMTIME can both hold.
constexpr int64_t LATEST_SECOND = 884'541'340'800;

constexpr char ZONE_KEY[] = "HKEY_LOCAL_MACHINE\\Time";
constexpr char ZONE_VALUE[] = "TimeZoneInformation";

TIME_ZONE_INFORMATION hostZone() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    TIME_ZONE_INFORMATION zone{};
    zone.Bias = static_cast<LONG>(-local.tm_gmtoff / SECONDS_PER_MINUTE);
    return zone;
}

// Every file that is listed needs the zone, so it is read once from each device: the device that it
// was read from last is its owner.
std::string zoneOwner;

const TIME_ZONE_INFORMATION& zone() {
    static TIME_ZONE_INFORMATION ofDevice;
    if (zoneOwner != deviceRoot()) {
        zoneOwner = deviceRoot();
        ofDevice = hostZone();
        host::Registry registry;
        host::loadRegistry(registry);
        const host::RegistryValue* stored = registry.find(ZONE_KEY, ZONE_VALUE);
        if (stored != nullptr && stored->data.size() == sizeof ofDevice)
            std::memcpy(&ofDevice, stored->data.data(), sizeof ofDevice);
    }
    return ofDevice;
}

FILETIME fromTicks(int64_t ticks) {
    return {static_cast<DWORD>(ticks & 0xFFFFFFFF), static_cast<DWORD>(ticks >> 32)};
}

int64_t toTicks(const FILETIME& time) {
    return static_cast<int64_t>((uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
}

FILETIME toLocal(const FILETIME& time) {
    const int64_t bias = int64_t{zone().Bias} + zone().StandardBias;
    const int64_t shift = bias * SECONDS_PER_MINUTE * TICKS_PER_SECOND;
    // Unsigned arithmetic, so that a time out of range wraps around.
    return fromTicks(
        static_cast<int64_t>(static_cast<uint64_t>(toTicks(time)) - static_cast<uint64_t>(shift)));
}

bool toCalendar(const FILETIME& time, SYSTEMTIME& calendar) {
    const int64_t ticks = toTicks(time);
    if (ticks < 0)
        return false;
    const std::time_t seconds = ticks / TICKS_PER_SECOND - SECONDS_1601_TO_1970;
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    calendar.wYear = static_cast<WORD>(parts.tm_year + 1900);
    calendar.wMonth = static_cast<WORD>(parts.tm_mon + 1);
    calendar.wDayOfWeek = static_cast<WORD>(parts.tm_wday);
    calendar.wDay = static_cast<WORD>(parts.tm_mday);
    calendar.wHour = static_cast<WORD>(parts.tm_hour);
    calendar.wMinute = static_cast<WORD>(parts.tm_min);
    calendar.wSecond = static_cast<WORD>(parts.tm_sec);
    calendar.wMilliseconds =
        static_cast<WORD>(ticks % TICKS_PER_SECOND / (TICKS_PER_SECOND / 1000));
    return true;
}

}  // namespace

namespace host {

FILETIME fileTime(const timespec& time) {
    // File systems can return times out of range.
    const int64_t seconds = std::clamp(int64_t{time.tv_sec}, -SECONDS_1601_TO_1970, LATEST_SECOND);
    return fromTicks((seconds + SECONDS_1601_TO_1970) * TICKS_PER_SECOND +
                     time.tv_nsec / NANOSECONDS_PER_TICK);
}

}  // namespace host

void Sleep(DWORD milliseconds) {
    if (host::refusedDisplayCall("Sleep", milliseconds))
        return;
    // A signal ends the pause early; those that the updater handles ask it to exit.
    const timespec pause{static_cast<std::time_t>(milliseconds / 1000),
                         static_cast<long>(milliseconds % 1000) * 1'000'000};
    ::nanosleep(&pause, nullptr);
}

void GetLocalTime(SYSTEMTIME* time) {
    if (host::errorFromHook("GetLocalTime") != ERROR_SUCCESS)
        return;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    toCalendar(toLocal(host::fileTime(now)), *time);
}

DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* information) {
    if (host::refusedByHook("GetTimeZoneInformation"))
        return TIME_ZONE_ID_INVALID;
    *information = zone();
    return TIME_ZONE_ID_UNKNOWN;
}

BOOL SetTimeZoneInformation(const TIME_ZONE_INFORMATION* information) {
    if (host::refusedByHook("SetTimeZoneInformation"))
        return FALSE;
    host::Registry registry;
    if (const DWORD error = host::loadRegistry(registry))
        return host::fail(error);
    registry.keys[ZONE_KEY][ZONE_VALUE] = {
        REG_BINARY, {reinterpret_cast<const char*>(information), sizeof *information}};
    if (const DWORD error = host::saveRegistry(registry))
        return host::fail(error);
    zoneOwner.clear();
    return TRUE;
}

BOOL FileTimeToLocalFileTime(const FILETIME* time, FILETIME* local) {
    if (host::refusedByHook("FileTimeToLocalFileTime"))
        return FALSE;
    *local = toLocal(*time);
    return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* calendar) {
    if (host::refusedByHook("FileTimeToSystemTime"))
        return FALSE;
    return toCalendar(*time, *calendar) || host::fail(ERROR_INVALID_PARAMETER);
}

BOOL QueryPerformanceFrequency(LARGE_INTEGER* frequency) {
    if (host::refusedByHook("QueryPerformanceFrequency"))
        return FALSE;
    frequency->QuadPart = NANOSECONDS_PER_SECOND;
    return TRUE;
}

BOOL QueryPerformanceCounter(LARGE_INTEGER* count) {
    if (host::refusedByHook("QueryPerformanceCounter"))
        return FALSE;
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    count->QuadPart = now.tv_sec * NANOSECONDS_PER_SECOND + now.tv_nsec;
    return TRUE;
}
