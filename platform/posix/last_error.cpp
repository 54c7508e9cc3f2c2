#include "platform/posix/last_error.h"

#include <cerrno>
#include <utility>

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD error) {
    lastError = error;
}

namespace host {

BOOL fail(DWORD error) {
    lastError = error;
    return FALSE;
}

DWORD windowsError(int error) {
    constexpr std::pair<int, DWORD> ERRORS[] = {
        {ENOENT, ERROR_FILE_NOT_FOUND},
        {ENOTDIR, ERROR_PATH_NOT_FOUND},
        {ENAMETOOLONG, ERROR_PATH_NOT_FOUND},
        {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
        {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
        {EACCES, ERROR_ACCESS_DENIED},
        {EPERM, ERROR_ACCESS_DENIED},
        {EISDIR, ERROR_ACCESS_DENIED},
        {ELOOP, ERROR_ACCESS_DENIED},
        {ENXIO, ERROR_ACCESS_DENIED},
        {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
        {EXDEV, ERROR_NOT_SAME_DEVICE},
        {EROFS, ERROR_WRITE_PROTECT},
        {EBUSY, ERROR_SHARING_VIOLATION},
        {ETXTBSY, ERROR_SHARING_VIOLATION},
        {EINVAL, ERROR_INVALID_PARAMETER},
        {ENOSPC, ERROR_DISK_FULL},
        {EDQUOT, ERROR_DISK_FULL},
        {EFBIG, ERROR_DISK_FULL},
        {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
        {EEXIST, ERROR_ALREADY_EXISTS},
        {ENOEXEC, ERROR_BAD_EXE_FORMAT},
        {EIO, ERROR_IO_DEVICE},
    };
    for (const auto& [ofHost, ofWindows] : ERRORS)
        if (error == ofHost)
            return ofWindows;
    return ERROR_GEN_FAILURE;
}

}  // namespace host
