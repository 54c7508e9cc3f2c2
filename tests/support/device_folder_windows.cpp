#include <windows.h>

#include "tests/support/device_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr LPCWSTR MAKER_KEY = L"SOFTWARE\\VELD";
constexpr LPCWSTR CONFIG_KEY = L"SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG";

// The folders that tests make. Nothing else of the drive is touched.
const char* const FOLDERS[] = {"FlashDisk", "USB HD", "T"};

// Windows keeps read-only files where they are, and reaches a path of more than MAX_PATH characters
// by this form only.
void removeTree(const fs::path& path) {
    const fs::path tree = L"\\\\?\\" + path.wstring();
    std::error_code error;
    fs::recursive_directory_iterator entry(tree, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
        SetFileAttributesW(entry->path().c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::remove_all(tree, error);
}

void clean(const fs::path& root) {
    for (const char* const folder : FOLDERS)
        removeTree(root / folder);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, MAKER_KEY);
}

}  // namespace

DeviceFolder::DeviceFolder() : root_(fs::current_path().root_path()) {
    clean(root_);
}

DeviceFolder::~DeviceFolder() {
    clean(root_);
}

void DeviceFolder::setLanguage(int language) const {
    HKEY key{};
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, CONFIG_KEY, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                    nullptr);
    const auto value = static_cast<DWORD>(language);
    RegSetValueExW(key, L"LANGUAGE", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                   sizeof value);
    RegCloseKey(key);
}

bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}
