// What an update replaces, on whatever it lies: a key, a device folder, or a copy of a flash disk.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

struct InstalledFile {
    std::filesystem::path file;
    uint64_t size;  // bytes
};

// Files by their path below the maker's folder, with "/": "KSTRL/KSTRL.exe".
using InstalledFiles = std::map<std::string, InstalledFile>;

// The maker's folder: of the key in `folder`, of the device whose flash disk lies there or in
// "FlashDisk", or `folder` itself when the components lie in it. Throws std::runtime_error, naming
// what was looked for, when it is none of these.
std::filesystem::path makerFolderOf(const std::filesystem::path& folder);

// The files of the components below `makerFolder`, with `suffix` behind the components' names:
// empty for what is installed, "_old" for the backup. Names stay without the suffix.
InstalledFiles installedFiles(const std::filesystem::path& makerFolder,
                              const std::string& suffix = {});

// Whether two files hold the same bytes. Throws std::runtime_error when one cannot be read.
bool sameContent(const InstalledFile& a, const InstalledFile& b);

// The version that the application's files tell ("version.txt" beside it); empty where they do not.
std::string applicationVersion(const std::filesystem::path& application);
