// Folders, deletion, attributes and the C runtime's file open, on host files.
//
// A file is read-only when the owner's write bit is missing; this applies to root too. A link can
// be deleted and moved but not opened.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/flush.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"

using host::Descriptor;
using host::fail;
using host::Place;
using host::refusedByHook;
using host::windowsError;

namespace {

BOOL failFromErrno() {
    return fail(windowsError(errno));
}

// Deletes a file, or a folder with all that is in it on the same disk.
void deleteAll(int folder, const std::string& name) {
    if (::unlinkat(folder, name.c_str(), 0) == 0 || host::isMounted(folder, name))
        return;
    constexpr int FLAGS = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const Descriptor inner(::openat(folder, name.c_str(), FLAGS));
    for (const std::string& each : host::readNames(inner.number()))
        deleteAll(inner.number(), each);
    ::unlinkat(folder, name.c_str(), AT_REMOVEDIR);
}

// Deletes pipes and whatever else a listing does not show, from a folder that has nothing else: to
// the device it is empty.
void deleteUnlisted(Place& place) {
    const Descriptor folder(host::openAt(place, O_PATH | O_DIRECTORY));
    const std::vector<std::string> names = host::readNames(folder.number());
    const auto isListed = [&](const std::string& name) {
        struct stat status {};
        return ::fstatat(folder.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
               host::isListed(name, status.st_mode);
    };
    if (std::none_of(names.begin(), names.end(), isListed))
        for (const std::string& name : names)
            deleteAll(folder.number(), name);
}

// Keeps room on the disk for what will be written to the file, so that an update that fills the
// disk can still tell so in the log. Not every file system can; less room is better than none.
void keepRoom(int file) {
    constexpr off_t MOST = off_t{1} << 16;
    constexpr off_t LEAST = off_t{1} << 12;
    for (off_t room = MOST; room >= LEAST; room /= 2)
        if (::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, room) == 0)
            return;
}

// Opens a regular file. For writing it may be new; what it had is removed.
DWORD openStream(LPCWSTR path, bool writing, Descriptor& file) {
    Place place;
    if (host::endsInSeparator(path))
        return ERROR_INVALID_NAME;
    if (const DWORD error = host::locate(path, place))
        return error;
    // O_DSYNC: what is written is on the disk when the stream's flush returns. O_APPEND: a write
    // that the disk refused may leave its text in the file all the same; the next one comes after
    // it.
    const int flags = writing ? O_WRONLY | O_CREAT | O_APPEND | O_DSYNC : O_RDONLY;
    // O_NONBLOCK: opening a named pipe would wait for the other end.
    file = Descriptor(host::openAt(place, flags | O_NONBLOCK, 0666));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return windowsError(errno);
    if (!S_ISREG(status.st_mode) || (writing && host::isReadOnly(status.st_mode)))
        return ERROR_ACCESS_DENIED;
    if (!writing)
        return ERROR_SUCCESS;
    if (::ftruncate(file.number(), 0) != 0)
        return windowsError(errno);
    // When this fails the log is written all the same, and tells of the moves that fail for it.
    host::flushFolder(place.folder.number());
    keepRoom(file.number());
    return ERROR_SUCCESS;
}

}  // namespace

BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES*) {
    if (refusedByHook("CreateDirectoryW", path))
        return FALSE;
    Place place;
    if (const DWORD error = host::locate(path, place))
        return fail(error);
    host::watchDisk(place.folder.number());
    return ::mkdirat(place.folder.number(), place.name.c_str(), 0777) == 0 || failFromErrno();
}

BOOL DeleteFileW(LPCWSTR path) {
    if (refusedByHook("DeleteFileW", path))
        return FALSE;
    Place place;
    struct stat status {};
    if (const DWORD error = host::find(path, place, status))
        return fail(error);
    if (S_ISDIR(status.st_mode) || host::isReadOnly(status.st_mode))
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
    const auto remove = [&] {
        return ::unlinkat(place.folder.number(), place.name.c_str(), AT_REMOVEDIR) == 0;
    };
    if (remove())
        return TRUE;
    // EBUSY: another disk is mounted there.
    if (errno == EBUSY)
        return fail(ERROR_DIR_NOT_EMPTY);
    if (errno == ENOTEMPTY)
        deleteUnlisted(place);
    return remove() || failFromErrno();
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
    Descriptor file;
    const bool writing = mode[0] == u'w';
    if (const DWORD error = openStream(path, writing, file)) {
        fail(error);
        return nullptr;
    }
    return ::fdopen(file.release(), writing ? "wb" : "rb");
}
