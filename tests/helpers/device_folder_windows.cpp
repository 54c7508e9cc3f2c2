#include <windows.h>

#include <cstdlib>

#include "tests/helpers/device_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr LPCWSTR MAKER_KEY = L"SOFTWARE\\VELD";

// The folders that tests create. Nothing else on the drive is touched.
const char* const FOLDERS[] = {"FlashDisk", "USB HD", "T", "D", "current", "later", "logs"};

// Removes a folder tree. Windows deletes a file only after its read-only flag is cleared. `path`
// begins with the prefix that allows names of any length.
void removeTree(const std::wstring& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        const std::wstring name = found.cFileName;
        const std::wstring full = path + L"\\" + name;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            SetFileAttributesW(full.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(full.c_str());
        } else if (name != L"." && name != L"..") {
            removeTree(full);
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    RemoveDirectoryW(path.c_str());
}

void clean(const fs::path& root) {
    for (const char* const folder : FOLDERS)
        removeTree(L"\\\\?\\" + (root / folder).wstring());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, MAKER_KEY);
}

}  // namespace

DeviceFolder::DeviceFolder() : root_(fs::current_path().root_path()) {
    if (root_.empty())  // Under Wine the current folder may be on no drive.
        std::abort();
    clean(root_);
}

DeviceFolder::~DeviceFolder() {
    clean(root_);
}

void DeviceFolder::setLanguage(int language) const {
    HKEY key{};
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, CONFIG_KEY, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                    nullptr);
    const auto value = static_cast<DWORD>(language);
    RegSetValueExW(key, L"LANGUAGE", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                   sizeof value);
    RegCloseKey(key);
}

bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}
