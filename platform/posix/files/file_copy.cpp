// CopyFileW.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"

using host::Descriptor;
using host::fail;
using host::FileIdentity;
using host::Place;
using host::windowsError;

namespace {

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

// Copies `size` bytes, or for size 0, which may mean unknown (/proc), up to the end. A file that
// has become shorter meanwhile is not copied.
DWORD copyContent(int from, int to, off_t size) {
    char buffer[std::size_t{1} << 16];
    for (off_t copied = 0; copied < size || size == 0;) {
        const ssize_t got = ::read(from, buffer, sizeof buffer);
        if (got < 0)
            return windowsError(errno);
        if (got == 0)
            return size == 0 ? ERROR_SUCCESS : ERROR_HANDLE_EOF;
        if (const DWORD error = writeAll(to, buffer, got))
            return error;
        copied += got;
    }
    return ERROR_SUCCESS;
}

// Copies content, mode and times to the empty file `to`, and closes it.
DWORD copyFile(int from, const struct stat& source, Descriptor& to) {
    if (const DWORD error = copyContent(from, to.number(), source.st_size))
        return error;
    // Flushes the content before the file becomes read-only: a file that a power cut left empty and
    // read-only could not be replaced by the next copy.
    if (host::isReadOnly(source.st_mode) && ::fdatasync(to.number()) != 0)
        return windowsError(errno);
    // Failures are ignored: FAT, for example, does not store these attributes.
    const timespec times[2] = {source.st_atim, source.st_mtim};
    if (host::isReadOnly(source.st_mode))
        ::fchmod(to.number(), source.st_mode & 0777);
    ::futimens(to.number(), times);
    return to.close() ? ERROR_SUCCESS : windowsError(errno);
}

// An existing destination must be a regular file that is not read-only.
DWORD refusal(const struct stat& source, const struct stat& present) {
    if (!S_ISREG(present.st_mode) || host::isReadOnly(present.st_mode))
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
    ::fchmod(output.number(), mode);
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
