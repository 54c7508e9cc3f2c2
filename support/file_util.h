// What a folder holds, and the text forms of a file's time and size.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/win32.h"

// A path of more characters than this is not looked at.
constexpr std::size_t MAX_PATH_LENGTH = 259;

struct FileEntry {
    std::string name;      // without its folder
    uint64_t size;         // bytes
    SYSTEMTIME lastWrite;  // local time
};

// What lies directly in `folder` (ending in a separator), "." and ".." left out, in the order in
// which the system returns it. Empty for a folder that is absent, cannot be searched, or whose path
// is too long.
std::vector<FileEntry> listDirectory(const std::string& folder, bool includeFolders,
                                     bool includeFiles);

// The creation time of a file in the form of formatTime; empty when there is no such file.
std::string fileTimeText(const std::string& path);

// "3KB", "2GB", but "1024 bytes": the units cut off what is left over, and begin above their size.
// Only "bytes" has a blank in front of it: screens and logs show sizes in this form.
std::string sizeText(int64_t bytes);
