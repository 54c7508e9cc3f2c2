// Replaces DefineDosDeviceW in an updatekey.exe for tests. Wine's own function makes drives that no
// program sees; those of Wine's mount manager are seen.

#include <windows.h>
#include <winioctl.h>

#include <string>

namespace {

constexpr DWORD DEFINE_DRIVE =
    CTL_CODE('m', 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

// Wine's mountmgr_unix_drive. The folder's name on Linux follows it.
struct DriveOfWine {
    ULONG size;
    ULONG type;  // DRIVE_NO_ROOT_DIR: remove it
    ULONG fileSystem;
    DWORD serial;
    ULONGLONG device;
    WCHAR letter;
    USHORT folderOffset;  // 0: none
    USHORT deviceOffset;
    USHORT labelOffset;
};

BOOL WINAPI defineDrive(DWORD flags, LPCWSTR name, LPCWSTR folder) {
    using UnixName = char*(CDECL*)(LPCWSTR);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    DriveOfWine drive{sizeof drive, DRIVE_FIXED, 0, 0, 0, name[0], sizeof drive, 0, 0};
    if ((flags & DDD_REMOVE_DEFINITION) != 0)
        drive.type = DRIVE_NO_ROOT_DIR;
    std::string request(reinterpret_cast<const char*>(&drive), sizeof drive);
    request += unixName(folder);
    const HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE, 0,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD size = 0;
    const BOOL done =
        DeviceIoControl(manager, DEFINE_DRIVE, request.data(),
                        static_cast<DWORD>(request.size() + 1), nullptr, 0, &size, nullptr);
    CloseHandle(manager);
    return done;
}

}  // namespace

// The address through which a program calls the function, otherwise that of the system's.
extern "C" const auto REPLACEMENT asm("__imp_DefineDosDeviceW") = &defineDrive;
