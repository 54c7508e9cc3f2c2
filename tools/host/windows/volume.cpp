#include "tools/host/volume.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "tools/host/windows/handle.h"
// Uses the types of the header above.
#include <winioctl.h>

namespace fs = std::filesystem;

namespace {

bool control(const Handle& volume, DWORD code) {
    DWORD size = 0;
    return DeviceIoControl(volume.get(), code, nullptr, 0, nullptr, 0, &size, nullptr) != FALSE;
}

// What the disk says about itself needs no rights.
bool isOnUsb(const Handle& volume) {
    STORAGE_PROPERTY_QUERY query{};
    STORAGE_DEVICE_DESCRIPTOR disk{};
    DWORD size = 0;
    return DeviceIoControl(volume.get(), IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, &disk,
                           sizeof disk, &size, nullptr) != FALSE &&
           disk.BusType == BusTypeUsb;
}

std::string diskOf(const Handle& volume) {
    STORAGE_DEVICE_NUMBER number{};
    DWORD size = 0;
    if (DeviceIoControl(volume.get(), IOCTL_STORAGE_GET_DEVICE_NUMBER, nullptr, 0, &number,
                        sizeof number, &size, nullptr) == FALSE)
        return {};
    return "disk " + std::to_string(number.DeviceNumber);
}

std::optional<Volume> volumeAt(const fs::path& root) {
    const UINT type = GetDriveTypeW(root.c_str());
    WCHAR label[MAX_PATH] = {};
    WCHAR fileSystem[MAX_PATH] = {};
    if ((type != DRIVE_REMOVABLE && type != DRIVE_FIXED) ||
        GetVolumeInformationW(root.c_str(), label, MAX_PATH, nullptr, nullptr, nullptr, fileSystem,
                              MAX_PATH) == FALSE)
        return std::nullopt;
    const std::wstring drive = root.root_name().wstring();
    const HANDLE handle =
        CreateFileW((L"\\\\.\\" + drive).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    const Handle volume(handle != INVALID_HANDLE_VALUE ? handle : nullptr);
    Volume found;
    found.folder = root;
    found.label = fs::path(label).string();
    found.fileSystem = fs::path(fileSystem).string();
    found.device = root.root_name().string();
    found.disk = diskOf(volume);
    found.removable = type == DRIVE_REMOVABLE || isOnUsb(volume);
    return found;
}

}  // namespace

std::vector<Volume> mountedVolumes(const fs::path&) {
    std::vector<Volume> volumes;
    const DWORD drives = GetLogicalDrives();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if ((drives >> (letter - 'A') & 1U) != 0)
            if (const auto volume = volumeAt(std::string(1, letter) + ":\\"))
                volumes.push_back(*volume);
    return volumes;
}

std::optional<Volume> volumeOf(const fs::path& path, const std::vector<Volume>& volumes) {
    const fs::path root = volumeRoot(path);
    const auto volume = std::find_if(volumes.begin(), volumes.end(),
                                     [&](const Volume& v) { return v.folder == root; });
    return volume == volumes.end() ? std::nullopt : std::optional(*volume);
}

bool isMountPoint(const fs::path& folder) {
    return volumeRoot(folder) == fs::absolute(folder / "").wstring();
}

Room roomOn(const fs::path& folder) {
    const std::wstring root = volumeRoot(folder);
    DWORD sectors = 0;
    DWORD bytes = 0;
    DWORD ignored = 0;
    DWORD flags = 0;
    ULARGE_INTEGER free{};
    ULARGE_INTEGER size{};
    if (GetDiskFreeSpaceExW(root.c_str(), &free, &size, nullptr) == FALSE ||
        GetDiskFreeSpaceW(root.c_str(), &sectors, &bytes, &ignored, &ignored) == FALSE ||
        GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) ==
            FALSE)
        failAt(folder);
    if ((flags & FILE_READ_ONLY_VOLUME) != 0)
        throw fs::filesystem_error("", folder, {ERROR_WRITE_PROTECT, std::system_category()});
    return {size.QuadPart, free.QuadPart, uint64_t{sectors} * bytes};
}

fs::path homeFolder() {
    const wchar_t* const home = _wgetenv(L"USERPROFILE");
    return home != nullptr ? home : L"";
}

fs::path systemFolder() {
    WCHAR folder[MAX_PATH] = {};
    GetWindowsDirectoryW(folder, MAX_PATH);
    return fs::path(folder).root_path();
}

void eject(const Volume& volume) {
    const Handle opened = openVolume(volume.folder);
    if (!opened || !control(opened, FSCTL_LOCK_VOLUME))
        throw std::runtime_error("another program uses it");
    if (!control(opened, FSCTL_DISMOUNT_VOLUME) || !control(opened, IOCTL_STORAGE_EJECT_MEDIA))
        throw std::runtime_error("Windows cannot eject it");
}
