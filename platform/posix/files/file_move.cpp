// MoveFileW, by the host's rename where possible. On Windows a rename within one drive always
// works; here an overlay refuses it for a folder of its lower layer. Such a folder is copied
// instead, and so is a file that moves to another drive.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/durable.h"
#include "platform/posix/files/file_copy.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"
#include "platform/posix/utf.h"

using host::Descriptor;
using host::fail;
using host::Place;
using host::windowsError;

namespace {

bool rename(const Place& from, const Place& to, unsigned flags) {
    return ::renameat2(from.folder.number(), from.name.c_str(), to.folder.number(), to.name.c_str(),
                       flags) == 0;
}

// EINVAL: the file system does not support the flag. It is known by now that the destination does
// not exist.
bool renameToNew(const Place& from, const Place& to) {
    return rename(from, to, RENAME_NOREPLACE) || (errno == EINVAL && rename(from, to, 0));
}

Descriptor openFolder(int folder, const std::string& name) {
    return Descriptor(
        ::openat(folder, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// Deletes `name` in a folder, with everything below it.
bool removeTree(int folder, const std::string& name) {
    if (::unlinkat(folder, name.c_str(), 0) == 0)
        return true;
    const Descriptor inner = openFolder(folder, name);
    std::vector<std::string> names;
    if (!inner.isOpen() || !host::readNames(inner.number(), names))
        return false;
    const auto remove = [&](const std::string& each) { return removeTree(inner.number(), each); };
    return std::all_of(names.begin(), names.end(), remove) &&
           ::unlinkat(folder, name.c_str(), AT_REMOVEDIR) == 0;
}

bool copyContent(int from, const std::string& name, const struct stat& status, int to,
                 const std::string& newName) {
    constexpr int NEW = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const Descriptor input(
        ::openat(from, name.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    Descriptor output(::openat(to, newName.c_str(), NEW, (status.st_mode & 0777) | S_IWUSR));
    return input.isOpen() && output.isOpen() &&
           host::copyFile(input.number(), status, output, true);
}

bool copyLink(int from, const std::string& name, int to, const std::string& newName) {
    char target[PATH_MAX];
    const ssize_t length = ::readlinkat(from, name.c_str(), target, sizeof target - 1);
    if (length < 0)
        return false;
    target[length] = '\0';
    return ::symlinkat(target, to, newName.c_str()) == 0;
}

// Copies the file or folder tree `name` in the folder `from` to `newName` in the folder `to`.
bool copyTree(int from, const std::string& name, int to, const std::string& newName) {
    struct stat status {};
    if (::fstatat(from, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return false;
    if (S_ISREG(status.st_mode))
        return copyContent(from, name, status, to, newName);
    if (S_ISLNK(status.st_mode))
        return copyLink(from, name, to, newName);
    if (!S_ISDIR(status.st_mode))
        return ::mknodat(to, newName.c_str(), status.st_mode, status.st_rdev) == 0;
    if (::mkdirat(to, newName.c_str(), 0777) != 0)
        return false;
    const Descriptor source = openFolder(from, name);
    const Descriptor target = openFolder(to, newName);
    std::vector<std::string> names;
    return source.isOpen() && target.isOpen() && host::readNames(source.number(), names) &&
           std::all_of(names.begin(), names.end(), [&](const std::string& each) {
               return copyTree(source.number(), each, target.number(), each);
           });
}

// Copies under a temporary name, renames the complete copy, and deletes the original last.
bool moveByCopying(const Place& from, const Place& to) {
    const int folder = to.folder.number();
    const Place unfinished{Descriptor(::openat(folder, ".", O_PATH | O_DIRECTORY | O_CLOEXEC)),
                           to.name + ".moving"};
    removeTree(folder, unfinished.name);
    if (copyTree(from.folder.number(), from.name, folder, unfinished.name) &&
        host::flushDisk(folder) && renameToNew(unfinished, to))
        return host::flushFolder(folder) && removeTree(from.folder.number(), from.name);
    const int error = errno;
    removeTree(folder, unfinished.name);
    errno = error;
    return false;
}

std::string driveOf(LPCWSTR path) {
    const std::string hostPath = host::resolveOnText(path);
    return host::foldCase(hostPath.substr(0, hostPath.find('/', deviceRoot().size() + 1)));
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
    if (error != ERROR_FILE_NOT_FOUND)
        return fail(error == ERROR_SUCCESS ? ERROR_ALREADY_EXISTS : error);
    // Flushes the contents first: after a power cut, a moved folder is either at its old place or
    // complete at the new one.
    if (!host::flushDisk(from.folder.number()))
        return fail(windowsError(errno));
    if (!renameToNew(from, to)) {
        const bool mayCopy =
            errno == EXDEV && (!S_ISDIR(status.st_mode) || driveOf(source) == driveOf(destination));
        if (!mayCopy || !moveByCopying(from, to))
            return fail(windowsError(errno));
    }
    // When the disk does not confirm the move, it has failed. It is not undone: a failing disk is
    // written to as little as possible.
    const bool confirmed =
        host::flushFolder(to.folder.number()) && host::flushFolder(from.folder.number());
    return confirmed || fail(windowsError(errno));
}
