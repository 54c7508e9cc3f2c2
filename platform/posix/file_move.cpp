// MoveFileW: renames, where the host can.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/posix/call_hook.h"
#include "platform/posix/durable.h"
#include "platform/posix/last_error.h"
#include "platform/posix/place.h"

using host::fail;
using host::Place;
using host::windowsError;

namespace {

bool rename(const Place& from, const Place& to, unsigned flags) {
    return ::renameat2(from.folder.number(), from.name.c_str(), to.folder.number(), to.name.c_str(),
                       flags) == 0;
}

}  // namespace

BOOL MoveFileW(LPCWSTR source, LPCWSTR destination) {
    if (host::refusedByHook("MoveFileW", source, destination))
        return FALSE;
    Place from;
    Place to;
    struct stat status {};
    if (const DWORD error = host::find(source, from, status))
        return fail(error);
    const DWORD error = host::find(destination, to, status);
    if (error != ERROR_FILE_NOT_FOUND)
        return fail(error == ERROR_SUCCESS ? ERROR_ALREADY_EXISTS : error);
    // Contents come first: after a power cut a moved folder is at its old place or whole at the
    // new.
    if (!host::flushDisk(from.folder.number()))
        return fail(windowsError(errno));
    // A file system without the flag: nothing was there to be replaced.
    if (!rename(from, to, RENAME_NOREPLACE) && (errno != EINVAL || !rename(from, to, 0)))
        return fail(windowsError(errno));
    // A move that the disk does not confirm has failed, and is not undone: a failing disk is
    // written to no more than it must.
    const bool confirmed =
        host::flushFolder(to.folder.number()) && host::flushFolder(from.folder.number());
    return confirmed || fail(windowsError(errno));
}
