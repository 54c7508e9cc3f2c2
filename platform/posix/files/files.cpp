// Folders, deletion, attributes and the C runtime's file open, on host files.
//
// A file is read-only when the owner's write bit is missing; this applies to root too. A link can
// be deleted and moved but not opened.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/durable.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"

using host::fail;
using host::Place;
using host::refusedByHook;
using host::windowsError;

namespace {

BOOL failFromErrno() {
    return fail(windowsError(errno));
}

}  // namespace

BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES*) {
    if (refusedByHook("CreateDirectoryW", path))
        return FALSE;
    Place place;
    if (const DWORD error = host::locate(path, place))
        return fail(error);
    return ::mkdirat(place.folder.number(), place.name.c_str(), 0777) == 0 || failFromErrno();
}

BOOL DeleteFileW(LPCWSTR path) {
    if (refusedByHook("DeleteFileW", path))
        return FALSE;
    Place place;
    struct stat status {};
    if (const DWORD error = host::find(path, place, status))
        return fail(error);
    if (S_ISDIR(status.st_mode) || host::isReadOnly(status))
        return fail(ERROR_ACCESS_DENIED);
    return ::unlinkat(place.folder.number(), place.name.c_str(), 0) == 0 || failFromErrno();
}

BOOL RemoveDirectoryW(LPCWSTR path) {
    if (refusedByHook("RemoveDirectoryW", path))
        return FALSE;
    Place place;
    struct stat status {};
    if (const DWORD error = host::find(path, place, status))
        return fail(error);
    if (!S_ISDIR(status.st_mode))
        return fail(ERROR_DIRECTORY);
    if (place.name == ".")
        return fail(ERROR_ACCESS_DENIED);
    return ::unlinkat(place.folder.number(), place.name.c_str(), AT_REMOVEDIR) == 0 ||
           failFromErrno();
}

DWORD GetFileAttributesW(LPCWSTR path) {
    if (refusedByHook("GetFileAttributesW", path))
        return INVALID_FILE_ATTRIBUTES;
    Place place;
    struct stat status {};
    if (const DWORD error = host::find(path, place, status, host::Case::AsWritten)) {
        fail(error);
        return INVALID_FILE_ATTRIBUTES;
    }
    return host::attributesOf(status.st_mode);
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) {
    if (refusedByHook("SetFileAttributesW", path, attributes))
        return FALSE;
    Place place;
    struct stat status {};
    if (const DWORD error = host::find(path, place, status, host::Case::AsWritten))
        return fail(error);
    if (S_ISDIR(status.st_mode))
        return TRUE;
    if (!S_ISREG(status.st_mode))
        return fail(ERROR_ACCESS_DENIED);
    constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const mode_t mode = readOnly ? status.st_mode & ~ANY_WRITE : status.st_mode | S_IWUSR;
    return ::fchmodat(place.folder.number(), place.name.c_str(), mode & 07777,
                      AT_SYMLINK_NOFOLLOW) == 0 ||
           failFromErrno();
}

FILE* _wfopen(LPCWSTR path, LPCWSTR mode) {
    if (refusedByHook("_wfopen", path, mode))
        return nullptr;
    const bool writing = mode[0] == u'w';
    Place place;
    const DWORD error =
        host::endsInSeparator(path) ? ERROR_INVALID_NAME : host::locate(path, place);
    if (error != ERROR_SUCCESS) {
        fail(error);
        return nullptr;
    }
    // O_NONBLOCK: opening a named pipe would wait for the other end. O_DSYNC: what is written is on
    // the disk when the stream's flush returns.
    const int flags = O_NONBLOCK | (writing ? O_WRONLY | O_CREAT | O_DSYNC : O_RDONLY);
    const int file = host::openAt(place, flags, 0666);
    struct stat status {};
    if (file < 0) {
        failFromErrno();
        return nullptr;
    }
    const bool known = ::fstat(file, &status) == 0;
    if (known && (!S_ISREG(status.st_mode) || (writing && host::isReadOnly(status)))) {
        fail(ERROR_ACCESS_DENIED);
    } else if (known && (!writing || ::ftruncate(file, 0) == 0)) {
        // A failed flush is ignored: the log must be written even when its name may be lost.
        if (writing)
            host::flushFolder(place.folder.number());
        if (FILE* stream = ::fdopen(file, writing ? "wb" : "rb"))
            return stream;
    } else {
        failFromErrno();
    }
    ::close(file);
    return nullptr;
}
