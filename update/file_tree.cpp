#include "update/file_tree.h"

#include "platform/win32.h"
#include "support/file_util.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/text.h"

void clearReadOnly(const std::string& path) {
    const WideString widePath = widen(path);
    // INVALID_FILE_ATTRIBUTES has this bit set: a missing file takes this path too, and the failed
    // SetFileAttributesW is logged. Kept.
    const DWORD attributes = GetFileAttributesW(widePath.c_str());
    if ((attributes & FILE_ATTRIBUTE_READONLY) == 0)
        return;
    debugPrint("*** Read only flag set on: %s", path.c_str());
    if (SetFileAttributesW(widePath.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}) == 0) {
        const DWORD error = GetLastError();
        Logger::instance().error("Error %d ::SetFileAttributes", static_cast<int>(error));
    }
}

int deleteTree(const std::string& path) {
    int result = 0;
    const auto files = listDirectory(path, false, true);
    const auto folders = listDirectory(path, true, false);

    for (const FileEntry& file : files) {
        const std::string full = path + file.name;
        clearReadOnly(full);
        if (DeleteFileW(widen(full).c_str()) == 0) {
            const DWORD error = GetLastError();
            Logger::instance().error("Error %d deleting file: %s", static_cast<int>(error),
                                     full.c_str());
            result = 1;
        }
    }
    // Overwrites the result of the files and of the subfolder before. A file that could not be
    // deleted still gives 1, because the removal of this folder then fails. Kept.
    for (const FileEntry& folder : folders)
        result = deleteTree(path + folder.name + PATH_SEPARATOR);

    if (RemoveDirectoryW(widen(path).c_str()) == 0) {
        const DWORD error = GetLastError();
        if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) {
            Logger::instance().error("Error %d ::RemoveDirectory(%s)", static_cast<int>(error),
                                     path.c_str());
            result = 1;
        }
    }
    return result;
}
