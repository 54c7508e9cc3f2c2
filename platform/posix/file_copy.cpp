// CopyFileW: in the kernel where the file system can, so that a large file costs no copy through
// memory and a file system with shared extents shares them.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/call_hook.h"
#include "platform/posix/device.h"
#include "platform/posix/file_status.h"
#include "platform/posix/last_error.h"

using posix::fail;
using posix::windowsError;

namespace {

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

  private:
    int number_;
};

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

bool copyContent(int from, int to, off_t size) {
    constexpr std::size_t most = std::size_t{1} << 30;
    for (off_t done = 0; done < size;) {
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, most, 0);
        if (copied > 0)
            done += copied;
        if (copied > 0 || (copied < 0 && errno == EINTR))
            continue;
        // A pair of file systems for which the kernel does not do it.
        const bool refused = copied < 0 && (errno == EXDEV || errno == EINVAL || errno == ENOSYS ||
                                            errno == EOPNOTSUPP);
        if (copied < 0 && !refused)
            return false;
        break;
    }
    // Whatever is left, also of a file that has more in it than its size says.
    return copyThroughMemory(from, to);
}

// What there is at the destination must be an ordinary file that may be replaced.
DWORD refusal(const struct stat& source, const struct stat& present, BOOL failIfExists) {
    if (failIfExists)
        return ERROR_FILE_EXISTS;
    if (!S_ISREG(present.st_mode) || posix::isReadOnly(present))
        return ERROR_ACCESS_DENIED;
    const bool same = source.st_dev == present.st_dev && source.st_ino == present.st_ino;
    return same ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
}

}  // namespace

BOOL CopyFileW(LPCWSTR source, LPCWSTR destination, BOOL failIfExists) {
    if (posix::refusedByHook("CopyFileW", source, destination, failIfExists))
        return FALSE;
    std::string from;
    std::string to;
    if (const DWORD error = posix::resolve(source, from))
        return fail(error);
    if (const DWORD error = posix::resolve(destination, to))
        return fail(error);

    const Descriptor input(::open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!input.isOpen() || ::fstat(input.number(), &status) != 0)
        return fail(windowsError(errno, from));
    if (!S_ISREG(status.st_mode))
        return fail(ERROR_ACCESS_DENIED);

    constexpr int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    int file = ::open(to.c_str(), flags | O_EXCL, 0600);
    if (file < 0 && errno == EEXIST) {
        struct stat present {};
        if (::lstat(to.c_str(), &present) == 0) {
            if (const DWORD error = refusal(status, present, failIfExists))
                return fail(error);
        }
        file = ::open(to.c_str(), flags | O_TRUNC, 0600);
    }
    const Descriptor output(file);
    if (!output.isOpen())
        return fail(errno == ENOENT ? ERROR_PATH_NOT_FOUND : windowsError(errno, to));

    if (!copyContent(input.number(), output.number(), status.st_size)) {
        const DWORD error = windowsError(errno, to);
        ::unlink(to.c_str());
        return fail(error);
    }
    // As far as the file system has modes and times: a copy to a memory stick is none the worse.
    const timespec times[2] = {status.st_atim, status.st_mtim};
    ::fchmod(output.number(), status.st_mode & 0777);
    ::futimens(output.number(), times);
    return TRUE;
}
