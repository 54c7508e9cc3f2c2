#include "tools/host/file_time.h"

#include "platform/win32.h"

namespace {

// Windows counts units of 100 nanoseconds since 1601.
constexpr ULONGLONG UNITS = 10'000'000;
constexpr ULONGLONG START = 11'644'473'600 * UNITS;

}  // namespace

std::time_t changeTime(const std::filesystem::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data) == FALSE)
        return 0;
    ULARGE_INTEGER units;
    units.LowPart = data.ftLastWriteTime.dwLowDateTime;
    units.HighPart = data.ftLastWriteTime.dwHighDateTime;
    return units.QuadPart < START ? 0 : static_cast<std::time_t>((units.QuadPart - START) / UNITS);
}

void setChangeTime(const std::filesystem::path& file, std::time_t time) {
    ULARGE_INTEGER units;
    units.QuadPart = START + static_cast<ULONGLONG>(time) * UNITS;
    const FILETIME stamp = {units.LowPart, units.HighPart};
    // The flag opens folders too.
    const HANDLE handle = CreateFileW(file.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    SetFileTime(handle, nullptr, &stamp, &stamp);
    CloseHandle(handle);
}
