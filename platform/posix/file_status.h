// What a host file's status is in the terms of Windows.
#pragma once

#include <sys/stat.h>

#include "platform/posix/win32_api.h"

namespace posix {

inline bool isReadOnly(const struct stat& status) {
    return S_ISREG(status.st_mode) && (status.st_mode & S_IWUSR) == 0;
}

inline DWORD attributesOf(const struct stat& status) {
    if (S_ISDIR(status.st_mode))
        return FILE_ATTRIBUTE_DIRECTORY;
    if (S_ISLNK(status.st_mode))
        return FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT;
    return FILE_ATTRIBUTE_ARCHIVE | (isReadOnly(status) ? FILE_ATTRIBUTE_READONLY : 0);
}

}  // namespace posix
