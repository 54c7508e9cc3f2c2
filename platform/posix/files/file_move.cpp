// MoveFileW, as one step: after a power cut a moved folder is the old or the new one, whole. A move
// to another drive, or of a folder that the host's file system cannot rename, fails with 17.

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/flush.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"
#include "platform/utf.h"

using host::fail;
using host::FileIdentity;
using host::Place;

namespace {

bool rename(const Place& from, const Place& to, unsigned flags) {
    return ::renameat2(from.folder.number(), from.name.c_str(), to.folder.number(), to.name.c_str(),
                       flags) == 0;
}

// A name may be changed to the same one in another case.
bool isSameName(LPCWSTR one, LPCWSTR other) {
    return host::foldCase(host::toHostPath(one)) == host::foldCase(host::toHostPath(other));
}

}  // namespace

BOOL MoveFileW(LPCWSTR source, LPCWSTR destination) {
    if (host::refusedByHook("MoveFileW", source, destination))
        return FALSE;
    Place from;
    Place to;
    struct stat status {};
    struct stat present {};
    if (const DWORD error = host::find(source, from, status))
        return fail(error);
    const DWORD error = host::find(destination, to, present);
    const bool isOnlyOne = error == ERROR_SUCCESS && isSameName(source, destination) &&
                           FileIdentity(status) == FileIdentity(present);
    if (error == ERROR_SUCCESS && !isOnlyOne)
        return fail(ERROR_ALREADY_EXISTS);
    if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
        return fail(error);
    if (isOnlyOne)
        host::locate(destination, to);  // the name as it is written

    if (const DWORD failure = host::flushDisk(from.folder.number()))
        return fail(failure);
    // EINVAL: the file system does not support the flag, or a folder would move into itself.
    if (!rename(from, to, isOnlyOne ? 0 : RENAME_NOREPLACE) &&
        (errno != EINVAL || !rename(from, to, 0)))
        return fail(errno == EINVAL ? ERROR_SHARING_VIOLATION : host::windowsError(errno));
    // On FAT a moved folder's new entry leads to its content only when the disk has been flushed
    // after the move too. That flush does not empty the disk's own cache; those of the folders do.
    //
    // When the disk does not confirm the move, it has failed. It is not undone: a failing disk is
    // written to as little as possible.
    host::flushDisk(to.folder.number());
    host::flushFolder(to.folder.number());
    const DWORD failure = host::flushFolder(from.folder.number());
    return failure == ERROR_SUCCESS || fail(failure);
}
