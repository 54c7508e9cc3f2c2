// Folders, moves, deletions, attributes and the runtime's file open, on the host's files.
//
// Read-only is the absence of the owner's write bit, and holds for root too. A link is a file that
// can be deleted and moved but not opened.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "platform/posix/call_hook.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/device.h"
#include "platform/posix/durable.h"
#include "platform/posix/file_status.h"
#include "platform/posix/last_error.h"

using host::fail;
using host::refusedByHook;
using host::windowsError;

namespace {

BOOL failFromErrno(const std::string& host) {
    return fail(windowsError(errno, host));
}

// Resolves `path` and reads the status of what is there; sets the last error when either fails.
bool find(LPCWSTR path, std::string& host, struct stat& status) {
    if (const DWORD error = host::resolveName(path, host))
        return fail(error) != FALSE;
    const host::Descriptor place(host::openResolved(host, O_PATH));
    const bool found = place.isOpen() && ::fstat(place.number(), &status) == 0;
    return found || failFromErrno(host) != FALSE;
}

}  // namespace

BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES*) {
    if (refusedByHook("CreateDirectoryW", path))
        return FALSE;
    std::string host;
    if (const DWORD error = host::resolve(path, host))
        return fail(error);
    if (::mkdir(host.c_str(), 0777) == 0)
        return TRUE;
    // A folder can only be missing above the new one.
    return errno == ENOENT ? fail(ERROR_PATH_NOT_FOUND) : failFromErrno(host);
}

BOOL MoveFileW(LPCWSTR source, LPCWSTR destination) {
    if (refusedByHook("MoveFileW", source, destination))
        return FALSE;
    std::string from;
    std::string to;
    struct stat status {};
    if (!find(source, from, status))
        return FALSE;
    if (const DWORD error = host::resolve(destination, to))
        return fail(error);
    if (::lstat(to.c_str(), &status) == 0)
        return fail(ERROR_ALREADY_EXISTS);
    // Contents come first: after a power cut a moved folder is at its old place or whole at the
    // new.
    if (!host::flushDiskOf(from))
        return failFromErrno(from);
    const bool moved =
        ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ||
        // A file system without the flag: nothing was there to be replaced.
        (errno == EINVAL && ::rename(from.c_str(), to.c_str()) == 0);
    if (!moved)
        return errno == ENOENT ? fail(ERROR_PATH_NOT_FOUND) : failFromErrno(to);
    // A move that the disk does not confirm has failed, and is not undone: a failing disk is
    // written to no more than it must.
    return (host::flushFolderOf(to) && host::flushFolderOf(from)) || failFromErrno(to);
}

BOOL DeleteFileW(LPCWSTR path) {
    if (refusedByHook("DeleteFileW", path))
        return FALSE;
    std::string host;
    struct stat status {};
    if (!find(path, host, status))
        return FALSE;
    if (S_ISDIR(status.st_mode) || host::isReadOnly(status))
        return fail(ERROR_ACCESS_DENIED);
    return ::unlink(host.c_str()) == 0 || failFromErrno(host);
}

BOOL RemoveDirectoryW(LPCWSTR path) {
    if (refusedByHook("RemoveDirectoryW", path))
        return FALSE;
    std::string host;
    struct stat status {};
    if (!find(path, host, status))
        return FALSE;
    if (!S_ISDIR(status.st_mode))
        return fail(ERROR_DIRECTORY);
    if (host == deviceRoot())
        return fail(ERROR_ACCESS_DENIED);
    if (::rmdir(host.c_str()) == 0)
        return TRUE;
    return errno == EEXIST ? fail(ERROR_DIR_NOT_EMPTY) : failFromErrno(host);
}

DWORD GetFileAttributesW(LPCWSTR path) {
    if (refusedByHook("GetFileAttributesW", path))
        return INVALID_FILE_ATTRIBUTES;
    std::string host;
    struct stat status {};
    return find(path, host, status) ? host::attributesOf(status.st_mode) : INVALID_FILE_ATTRIBUTES;
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) {
    if (refusedByHook("SetFileAttributesW", path, attributes))
        return FALSE;
    std::string host;
    struct stat status {};
    if (!find(path, host, status))
        return FALSE;
    if (S_ISDIR(status.st_mode))
        return TRUE;
    if (!S_ISREG(status.st_mode))
        return fail(ERROR_ACCESS_DENIED);
    constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const mode_t mode = readOnly ? status.st_mode & ~ANY_WRITE : status.st_mode | S_IWUSR;
    return ::chmod(host.c_str(), mode & 07777) == 0 || failFromErrno(host);
}

FILE* _wfopen(LPCWSTR path, LPCWSTR mode) {
    if (refusedByHook("_wfopen", path, mode))
        return nullptr;
    std::string host;
    if (const DWORD error = host::resolveName(path, host)) {
        fail(error);
        return nullptr;
    }
    const bool writing = mode[0] == u'w';
    // Not blocking: the open of a named pipe would wait for its other end.
    // What is written is on the disk when the stream's flush returns.
    const int flags = O_NONBLOCK | (writing ? O_WRONLY | O_CREAT | O_DSYNC : O_RDONLY);
    const int file = host::openResolved(host, flags, 0666);
    struct stat status {};
    if (file < 0) {
        failFromErrno(host);
        return nullptr;
    }
    const bool known = ::fstat(file, &status) == 0;
    if (known && (!S_ISREG(status.st_mode) || (writing && host::isReadOnly(status)))) {
        fail(ERROR_ACCESS_DENIED);
    } else if (known && (!writing || ::ftruncate(file, 0) == 0)) {
        // On a disk that fails a file that may be lost is better than none: the log tells of it.
        if (writing)
            host::flushFolderOf(host);
        if (FILE* stream = ::fdopen(file, writing ? "wb" : "rb"))
            return stream;
    } else {
        failFromErrno(host);
    }
    ::close(file);
    return nullptr;
}
