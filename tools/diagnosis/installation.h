// The folders that an update replaces, on a key, a device folder or a copy of a flash disk.
#pragma once

#include <filesystem>
#include <string>

#include "tools/host/file_changes.h"

// The folders that an update replaces, their backups, and its staging folder.
constexpr const char* UPDATE_FOLDERS[] = {"KSTRL", "KSTRL_old", "ORBUI", "ORBUI_old", "Update"};

// Finds the maker's folder: that of the key in `folder`; that of a device whose flash disk is
// `folder` or "FlashDisk" in it; or `folder` itself when it contains the components. Throws
// std::runtime_error, listing the places searched, when there is none.
std::filesystem::path makerFolderOf(const std::filesystem::path& folder);

// Lists the files of the components by their path below `makerFolder`: "KSTRL/KSTRL.exe".
FileSet installedFiles(const std::filesystem::path& makerFolder);

// Returns the version in the application's "version.txt"; empty when there is none.
std::string applicationVersion(const std::filesystem::path& application);
