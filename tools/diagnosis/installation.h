// The folders that an update replaces, on a key, a device folder or a copy of a flash disk.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

// The folders that an update replaces, their backups, and its staging folder.
constexpr const char* UPDATE_FOLDERS[] = {"KSTRL", "KSTRL_old", "ORBUI", "ORBUI_old", "Update"};

struct InstalledFile {
    std::filesystem::path file;
    uint64_t size;  // bytes
};

// Files by their path below the maker's folder, with "/": "KSTRL/KSTRL.exe".
using InstalledFiles = std::map<std::string, InstalledFile>;

// Finds the maker's folder: that of the key in `folder`; that of a device whose flash disk is
// `folder` or "FlashDisk" in it; or `folder` itself when it contains the components. Throws
// std::runtime_error, listing the places searched, when there is none.
std::filesystem::path makerFolderOf(const std::filesystem::path& folder);

// Lists the files of the components below `makerFolder`.
InstalledFiles installedFiles(const std::filesystem::path& makerFolder);

// Whether two files have the same content. Throws std::runtime_error when one cannot be read.
bool sameContent(const InstalledFile& a, const InstalledFile& b);

// Returns the version in the application's "version.txt"; empty when there is none.
std::string applicationVersion(const std::filesystem::path& application);
