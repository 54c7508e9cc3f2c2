// CopyFileW: in the kernel where the file system can, so that a large file costs no copy through
// memory and a file system with shared extents shares them.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/call_hook.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/device.h"
#include "platform/posix/file_status.h"
#include "platform/posix/last_error.h"

using host::Descriptor;
using host::fail;
using host::windowsError;

namespace {

bool writeAll(int to, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(to, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copyThroughMemory(int from, int to) {
    char buffer[std::size_t{1} << 16];
    for (;;) {
        const ssize_t got = ::read(from, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got == 0;
        if (!writeAll(to, buffer, static_cast<std::size_t>(got)))
            return false;
    }
}

// Copies `size` bytes from where both files stand.
bool copyPiece(int from, int to, off_t size) {
    for (off_t done = 0; done < size;) {
        const auto left = static_cast<std::size_t>(size - done);
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, left, 0);
        if (copied > 0)
            done += copied;
        if (copied > 0 || (copied < 0 && errno == EINTR))
            continue;
        // A pair of file systems for which the kernel does not do it.
        const bool refused = copied < 0 && (errno == EXDEV || errno == EINVAL || errno == ENOSYS ||
                                            errno == EOPNOTSUPP);
        return (copied == 0 || refused) && copyThroughMemory(from, to);
    }
    return true;
}

// Holes stay holes: a sparse file takes no more room than it did.
bool copySparse(int from, int to, off_t size) {
    for (off_t at = 0; at < size;) {
        const off_t data = ::lseek(from, at, SEEK_DATA);
        if (data < 0)
            break;
        const off_t hole = ::lseek(from, data, SEEK_HOLE);
        at = hole > data ? hole : size;
        if (::lseek(from, data, SEEK_SET) < 0 || ::lseek(to, data, SEEK_SET) < 0 ||
            !copyPiece(from, to, at - data))
            return false;
    }
    return ::ftruncate(to, size) == 0;
}

bool copyContent(int from, int to, const struct stat& status) {
    // A file whose size the kernel does not tell has more in it than that.
    if (status.st_size == 0)
        return copyThroughMemory(from, to);
    constexpr off_t BLOCK_SIZE = 512;
    const bool sparse = status.st_blocks * BLOCK_SIZE < status.st_size;
    const bool seekable = sparse && ::lseek(from, 0, SEEK_DATA) >= 0;
    return (seekable || (sparse && errno == ENXIO)) ? copySparse(from, to, status.st_size)
                                                    : copyPiece(from, to, status.st_size);
}

// What there is at the destination must be an ordinary file that may be replaced.
DWORD refusal(const struct stat& source, const struct stat& present, BOOL failIfExists) {
    if (failIfExists)
        return ERROR_FILE_EXISTS;
    if (!S_ISREG(present.st_mode) || host::isReadOnly(present))
        return ERROR_ACCESS_DENIED;
    const bool same = source.st_dev == present.st_dev && source.st_ino == present.st_ino;
    return same ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
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

    const Descriptor input(host::openResolved(from, O_RDONLY | O_NONBLOCK));
    struct stat status {};
    if (!input.isOpen() || ::fstat(input.number(), &status) != 0)
        return fail(windowsError(errno, from));
    if (!S_ISREG(status.st_mode))
        return fail(ERROR_ACCESS_DENIED);

    constexpr int flags = O_WRONLY | O_CREAT | O_NONBLOCK;
    // Writable until its content is complete, so that a copy that is killed can be made again.
    const mode_t mode = status.st_mode & 0777;
    int file = host::openResolved(to, flags | O_EXCL, mode | S_IWUSR);
    const bool replaces = file < 0 && errno == EEXIST;
    if (replaces) {
        struct stat present {};
        if (::lstat(to.c_str(), &present) == 0) {
            if (const DWORD error = refusal(status, present, failIfExists))
                return fail(error);
        }
        file = host::openResolved(to, flags | O_TRUNC, mode | S_IWUSR);
    }
    const Descriptor output(file);
    if (!output.isOpen())
        return fail(errno == ENOENT ? ERROR_PATH_NOT_FOUND : windowsError(errno, to));

    if (!copyContent(input.number(), output.number(), status)) {
        const DWORD error = windowsError(errno, to);
        ::unlink(to.c_str());
        return fail(error);
    }
    // As far as the file system has modes and times: a copy to a memory stick is none the worse.
    const timespec times[2] = {status.st_atim, status.st_mtim};
    if (replaces || host::isReadOnly(status))
        ::fchmod(output.number(), mode);
    ::futimens(output.number(), times);
    return TRUE;
}
