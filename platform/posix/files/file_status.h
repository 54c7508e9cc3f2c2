// The status of a host file in Windows terms.
#pragma once

#include <sys/stat.h>

#include "platform/posix/win32_api.h"

namespace host {

inline bool isReadOnly(mode_t mode) {
    return S_ISREG(mode) && (mode & S_IWUSR) == 0;
}

inline bool isReadOnly(const struct stat& status) {
    return isReadOnly(status.st_mode);
}

inline DWORD attributesOf(mode_t mode) {
    if (S_ISDIR(mode))
        return FILE_ATTRIBUTE_DIRECTORY;
    if (S_ISLNK(mode))
        return FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT;
    return FILE_ATTRIBUTE_ARCHIVE | (isReadOnly(mode) ? FILE_ATTRIBUTE_READONLY : 0);
}

}  // namespace host
