#include "tools/host/windows/handle.h"

#include <cwctype>
#include <system_error>

namespace fs = std::filesystem;

void failAt(const fs::path& path) {
    throw fs::filesystem_error("", path,
                               {static_cast<int>(GetLastError()), std::system_category()});
}

Handle openHandle(const fs::path& path, DWORD access, DWORD creation, DWORD flags) {
    constexpr DWORD SHARED = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE handle =
        CreateFileW(path.c_str(), access, SHARED, nullptr, creation, flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        failAt(path);
    return Handle(handle);
}

std::wstring volumeRoot(const fs::path& path) {
    WCHAR root[MAX_PATH] = {};
    std::error_code error;
    GetVolumePathNameW(fs::absolute(path, error).c_str(), root, MAX_PATH);
    root[0] = static_cast<WCHAR>(std::towupper(root[0]));
    return root;
}

Handle openVolume(const fs::path& path) try {
    const std::wstring root = volumeRoot(path);
    return openHandle(L"\\\\.\\" + root.substr(0, root.find(L'\\')), GENERIC_READ | GENERIC_WRITE,
                      OPEN_EXISTING, 0);
} catch (const fs::filesystem_error&) {
    return {};
}
