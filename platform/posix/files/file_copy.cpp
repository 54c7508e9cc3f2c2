// CopyFileW. The kernel copies where the file systems support it: a large file need not pass
// through this program's memory, and a file system with shared extents can share them.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/file_copy.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"
#include "platform/posix/processes/proc_files.h"

using host::Descriptor;
using host::fail;
using host::FileIdentity;
using host::Place;
using host::windowsError;

namespace {

bool writeAll(int to, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(to, data, size);
        if (written < 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copyThroughMemory(int from, int to, off_t size) {
    char buffer[std::size_t{1} << 16];
    for (off_t left = size; left > 0;) {
        const off_t piece = std::min(left, static_cast<off_t>(sizeof buffer));
        const ssize_t got = ::read(from, buffer, static_cast<std::size_t>(piece));
        if (got <= 0)
            return got == 0;
        if (!writeAll(to, buffer, static_cast<std::size_t>(got)))
            return false;
        left -= got;
    }
    return true;
}

// Copies `size` bytes from the current positions, or up to the end of the input.
bool copyPiece(int from, int to, off_t size) {
    for (off_t left = size; left > 0;) {
        const ssize_t copied =
            ::copy_file_range(from, nullptr, to, nullptr, static_cast<std::size_t>(left), 0);
        // The kernel cannot copy between all file systems, and reports the end of some files too
        // early. A fault of the disk stops the copy through memory too.
        if (copied <= 0)
            return copyThroughMemory(from, to, left);
        left -= copied;
    }
    return true;
}

// Copies the data between holes only, so that a sparse file stays sparse.
bool copySparse(int from, int to, off_t size) {
    for (off_t at = 0; at < size;) {
        const off_t data = ::lseek(from, at, SEEK_DATA);
        if (data < 0 && errno == ENXIO)  // no data up to the end
            break;
        const off_t hole = data < 0 ? -1 : ::lseek(from, data, SEEK_HOLE);
        if (hole < 0 || ::lseek(from, data, SEEK_SET) < 0 || ::lseek(to, data, SEEK_SET) < 0 ||
            !copyPiece(from, to, hole - data))
            return false;
        at = hole;
    }
    return ::ftruncate(to, size) == 0;
}

bool copyContent(int from, int to, const struct stat& status) {
    // st_size 0 may mean unknown (/proc): read to the end.
    if (status.st_size == 0)
        return copyThroughMemory(from, to, std::numeric_limits<off_t>::max());
    constexpr off_t BLOCK_SIZE = 512;
    const bool sparse = status.st_blocks * BLOCK_SIZE < status.st_size;
    // Not every file system can report holes.
    const bool seekable = sparse && (::lseek(from, 0, SEEK_DATA) >= 0 || errno != EINVAL);
    return seekable ? copySparse(from, to, status.st_size) : copyPiece(from, to, status.st_size);
}

// An existing destination must be a regular file that is not read-only.
DWORD refusal(const struct stat& source, const struct stat& present) {
    if (!S_ISREG(present.st_mode) || host::isReadOnly(present))
        return ERROR_ACCESS_DENIED;
    return FileIdentity(source) == FileIdentity(present) ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
}

// Removes the incomplete destination of a failed copy.
void removeUnfinished(LPCWSTR path) {
    Place place;
    if (host::locate(path, place) == ERROR_SUCCESS)
        ::unlinkat(place.folder.number(), place.name.c_str(), 0);
}

}  // namespace

bool host::copyFile(int from, const struct stat& source, Descriptor& to, bool replaces) {
    if (!copyContent(from, to.number(), source))
        return false;
    // Flushes the content before the file becomes read-only: a file that a power cut left empty and
    // read-only could not be replaced by the next copy.
    if (isReadOnly(source) && ::fdatasync(to.number()) != 0)
        return false;
    // Failures are ignored: FAT, for example, does not store these attributes.
    const timespec times[2] = {source.st_atim, source.st_mtim};
    if (replaces || isReadOnly(source))
        ::fchmod(to.number(), source.st_mode & 0777);
    ::futimens(to.number(), times);
    return to.close();
}

BOOL CopyFileW(LPCWSTR source, LPCWSTR destination, BOOL failIfExists) {
    if (host::refusedByHook("CopyFileW", source, destination, failIfExists))
        return FALSE;
    std::string from;
    std::string to;
    if (const DWORD error = host::resolveName(source, from))
        return fail(error);
    if (const DWORD error = host::resolveName(destination, to))
        return fail(error);

    if (host::endsInSeparator(source) || host::endsInSeparator(destination))
        return fail(ERROR_INVALID_NAME);

    const Descriptor input(host::openResolved(from, O_RDONLY | O_NONBLOCK));
    struct stat status {};
    if (!input.isOpen() || ::fstat(input.number(), &status) != 0)
        return fail(windowsError(errno, from));
    if (!S_ISREG(status.st_mode))
        return fail(ERROR_ACCESS_DENIED);

    constexpr int FLAGS = O_WRONLY | O_NONBLOCK;
    // The copy stays writable until it is complete, so that a copy that was killed can be repeated.
    const mode_t mode = (status.st_mode & 0777) | S_IWUSR;
    Descriptor output(host::openResolved(to, FLAGS | O_CREAT | O_EXCL, mode));
    const bool replaces = !output.isOpen() && errno == EEXIST;
    if (replaces && failIfExists)
        return fail(ERROR_FILE_EXISTS);
    if (replaces)
        output = Descriptor(host::openResolved(to, FLAGS));
    if (!output.isOpen())
        return fail(errno == ENOENT ? ERROR_PATH_NOT_FOUND : windowsError(errno));
    struct stat present {};
    if (replaces && ::fstat(output.number(), &present) != 0)
        return fail(windowsError(errno));
    if (const DWORD error = replaces ? refusal(status, present) : ERROR_SUCCESS)
        return fail(error);
    if ((!replaces || ::ftruncate(output.number(), 0) == 0) &&
        host::copyFile(input.number(), status, output, replaces))
        return TRUE;
    const DWORD error = windowsError(errno);
    removeUnfinished(destination);
    return fail(error);
}
