// Directory listings, and file times and sizes as text. The instrument's programs share these
// functions; the updater itself uses only listDirectory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/win32.h"

// Longer paths are not searched.
constexpr std::size_t MAX_PATH_LENGTH = 259;

struct FileEntry {
    std::string name;      // without the folder
    uint64_t size;         // bytes
    SYSTEMTIME lastWrite;  // local time
};

// Lists the entries of `folder` (a path ending in a separator) without "." and "..", in the
// system's order. Returns an empty list when the folder is missing, cannot be searched, or has too
// long a path.
std::vector<FileEntry> listDirectory(const std::string& folder, bool includeFolders,
                                     bool includeFiles);

// The creation time of a file, in the format of formatTime; empty when there is no such file.
std::string fileTimeText(const std::string& path);

// Formats a size such as "3KB" or "1024 bytes". Rounds down; a unit is used only above one of it.
// Only "bytes" has a blank before it. Kept.
std::string sizeText(int64_t bytes);
