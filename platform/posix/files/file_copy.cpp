// CopyFileW.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
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

constexpr off_t UNKNOWN_SIZE = std::numeric_limits<off_t>::max();

DWORD writeAll(int to, const char* data, ssize_t size) {
    while (size > 0) {
        const ssize_t written = ::write(to, data, static_cast<std::size_t>(size));
        if (written < 0)
            return windowsError(errno);
        data += written;
        size -= written;
    }
    return ERROR_SUCCESS;
}

// Copies `size` bytes from the current positions.
DWORD copyPiece(int from, int to, off_t size) {
    char buffer[std::size_t{1} << 16];
    for (off_t left = size; left > 0;) {
        const off_t piece = std::min(left, static_cast<off_t>(sizeof buffer));
        const ssize_t got = ::read(from, buffer, static_cast<std::size_t>(piece));
        if (got < 0)
            return windowsError(errno);
        if (got == 0)  // a file that has become shorter meanwhile is not copied
            return size == UNKNOWN_SIZE ? ERROR_SUCCESS : ERROR_HANDLE_EOF;
        if (const DWORD error = writeAll(to, buffer, got))
            return error;
        left -= got;
    }
    return ERROR_SUCCESS;
}

// Copies the data between holes only, so that a sparse file stays sparse.
DWORD copySparse(int from, int to, off_t size) {
    for (off_t at = 0; at < size;) {
        const off_t data = ::lseek(from, at, SEEK_DATA);
        if (data < 0 && errno == ENXIO)  // no data up to the end
            break;
        const off_t hole = data < 0 ? -1 : ::lseek(from, data, SEEK_HOLE);
        if (hole < 0 || ::lseek(from, data, SEEK_SET) < 0 || ::lseek(to, data, SEEK_SET) < 0)
            return windowsError(errno);
        if (const DWORD error = copyPiece(from, to, hole - data))
            return error;
        at = hole;
    }
    if (::lseek(from, 0, SEEK_END) < size)
        return ERROR_HANDLE_EOF;
    return ::ftruncate(to, size) == 0 ? ERROR_SUCCESS : windowsError(errno);
}

DWORD copyContent(int from, int to, const struct stat& status) {
    // st_size 0 may mean unknown (/proc): read to the end.
    if (status.st_size == 0)
        return copyPiece(from, to, UNKNOWN_SIZE);
    constexpr off_t BLOCK_SIZE = 512;
    const bool sparse = status.st_blocks * BLOCK_SIZE < status.st_size;
    // Not every file system can report holes.
    const bool seekable = sparse && (::lseek(from, 0, SEEK_DATA) >= 0 || errno != EINVAL);
    return seekable ? copySparse(from, to, status.st_size) : copyPiece(from, to, status.st_size);
}

// Copies content, mode and times to the empty file `to`, and closes it.
DWORD copyFile(int from, const struct stat& source, Descriptor& to) {
    if (const DWORD error = copyContent(from, to.number(), source))
        return error;
    // Flushes the content before the file becomes read-only: a file that a power cut left empty and
    // read-only could not be replaced by the next copy.
    if (host::isReadOnly(source) && ::fdatasync(to.number()) != 0)
        return windowsError(errno);
    // Failures are ignored: FAT, for example, does not store these attributes.
    const timespec times[2] = {source.st_atim, source.st_mtim};
    ::fchmod(to.number(), source.st_mode & 0777);
    ::futimens(to.number(), times);
    return to.close() ? ERROR_SUCCESS : windowsError(errno);
}

// An existing destination must be a regular file that is not read-only.
DWORD refusal(const struct stat& source, const struct stat& present) {
    if (!S_ISREG(present.st_mode) || host::isReadOnly(present))
        return ERROR_ACCESS_DENIED;
    return FileIdentity(source) == FileIdentity(present) ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
}

// Opens the destination, which is new or becomes empty.
DWORD openDestination(const std::string& path, const struct stat& source, bool mustBeNew,
                      Descriptor& output) {
    constexpr int FLAGS = O_WRONLY | O_NONBLOCK;
    // The copy stays writable until it is complete, so that a copy that was killed can be repeated.
    const mode_t mode = (source.st_mode & 0777) | S_IWUSR;
    output = Descriptor(host::openResolved(path, FLAGS | O_CREAT | O_EXCL, mode));
    if (output.isOpen())
        return ERROR_SUCCESS;
    if (errno == EEXIST && mustBeNew)
        return ERROR_FILE_EXISTS;
    if (errno == EEXIST)
        output = Descriptor(host::openResolved(path, FLAGS));
    if (!output.isOpen())
        return errno == ENOENT ? ERROR_PATH_NOT_FOUND : windowsError(errno);
    struct stat present {};
    if (::fstat(output.number(), &present) != 0)
        return windowsError(errno);
    if (const DWORD error = refusal(source, present))
        return error;
    return ::ftruncate(output.number(), 0) == 0 ? ERROR_SUCCESS : windowsError(errno);
}

// Removes the incomplete destination of a failed copy.
void removeUnfinished(LPCWSTR path) {
    Place place;
    if (host::locate(path, place) == ERROR_SUCCESS)
        ::unlinkat(place.folder.number(), place.name.c_str(), 0);
}

}  // namespace

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
    Descriptor output;
    if (const DWORD error = openDestination(to, status, failIfExists != FALSE, output))
        return fail(error);
    const DWORD error = copyFile(input.number(), status, output);
    if (error == ERROR_SUCCESS)
        return TRUE;
    removeUnfinished(destination);
    return fail(error);
}
