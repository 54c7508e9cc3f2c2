// The folders that an update replaces, on a key, a device folder or a copy of a flash disk. Names
// are found without regard to case, as the instrument finds them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/host/file_changes.h"
#include "update/key_layout.h"

// Below the maker's folder.
inline const std::string APPLICATION_BACKUP =
    std::string(keylayout::APPLICATION) + keylayout::BACKUP_SUFFIX;
inline const std::string GUI_BACKUP = std::string(keylayout::GUI) + keylayout::BACKUP_SUFFIX;

// The folders that an update replaces, their backups, and its staging folder.
inline const std::vector<std::string> UPDATE_FOLDERS = {
    keylayout::APPLICATION, APPLICATION_BACKUP, keylayout::GUI, GUI_BACKUP, keylayout::STAGING};

// Returns the path of the file or folder `relative` in `folder` as it is written there, or
// `folder / relative` when there is none. Throws std::runtime_error when a folder cannot be read.
std::filesystem::path entryAt(const std::filesystem::path& folder,
                              const std::filesystem::path& relative);

// Finds the maker's folder: that of the key in `folder`; that of a device whose flash disk is
// `folder` or "FlashDisk" in it; or `folder` itself when it contains the components. Throws
// std::runtime_error, listing the places searched, when there is none.
std::filesystem::path makerFolderOf(const std::filesystem::path& folder);

// Whether the maker's folder is that of an update key: an update does not copy the release notes.
bool isOnKey(const std::filesystem::path& makerFolder);

// Lists the files of the components by their path below `makerFolder`: "KSTRL/KSTRL.exe".
FileSet installedFiles(const std::filesystem::path& makerFolder);

// Returns the version in the application's "version.txt"; empty when there is none.
std::string applicationVersion(const std::filesystem::path& application);
