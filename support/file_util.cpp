#include "support/file_util.h"

#include "support/logger.h"
#include "support/text.h"
#include "support/time_util.h"

namespace {

// Widens a path for the search functions. Returns an empty path, which finds nothing, when it does
// not fit into a buffer of MAX_PATH characters.
WideString searchPath(const std::string& path) {
    if (path.size() + 1 > MAX_PATH) {
        debugPrint("mbstowcs_s path conversion error.");
        return {};
    }
    return widen(path);
}

SYSTEMTIME toLocalCalendar(const FILETIME& time) {
    FILETIME local{};
    if (!FileTimeToLocalFileTime(&time, &local))
        debugPrint("FileTimeToLocalFileTime error.");
    SYSTEMTIME calendar{};
    if (!FileTimeToSystemTime(&local, &calendar))
        debugPrint("FileTimeToSystemTime error.");
    return calendar;
}

}  // namespace

std::vector<FileEntry> listDirectory(const std::string& folder, bool includeFolders,
                                     bool includeFiles) {
    std::vector<FileEntry> entries;
    if (folder.empty() || folder.size() > MAX_PATH_LENGTH)
        return entries;

    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(searchPath(folder + "*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return entries;
    do {
        const std::string name = narrow(found.cFileName);
        if (name == "." || name == "..")
            continue;
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder ? includeFolders : includeFiles) {
            const uint64_t size = (uint64_t{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
            entries.push_back({name, size, toLocalCalendar(found.ftLastWriteTime)});
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return entries;
}

std::string fileTimeText(const std::string& path) {
    if (path.size() > MAX_PATH_LENGTH)
        return {};
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(searchPath(path).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return {};
    FindClose(search);
    // This is the creation time, while listDirectory gives the last write. Kept.
    return formatTime(toLocalCalendar(found.ftCreationTime));
}

std::string sizeText(int64_t bytes) {
    constexpr int64_t KILOBYTE = int64_t{1} << 10;
    constexpr int64_t MEGABYTE = int64_t{1} << 20;
    constexpr int64_t GIGABYTE = int64_t{1} << 30;
    if (bytes > GIGABYTE)
        return std::to_string(bytes / GIGABYTE) + "GB";
    if (bytes > MEGABYTE)
        return std::to_string(bytes / MEGABYTE) + "MB";
    if (bytes > KILOBYTE)
        return std::to_string(bytes / KILOBYTE) + "KB";
    return std::to_string(bytes) + " bytes";
}
