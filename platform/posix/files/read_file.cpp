#include "platform/posix/files/read_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/posix/files/descriptor.h"

namespace host {

int readFile(const std::string& path, std::string& bytes, std::size_t limit) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return errno;
    if (!S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? EISDIR : EACCES;
    char piece[4096];
    for (std::size_t left = limit;;) {
        const ssize_t got = ::read(file.number(), piece, sizeof piece);
        if (got <= 0)
            return got == 0 ? 0 : errno;
        const std::size_t taken = std::min(static_cast<std::size_t>(got), left);
        bytes.append(piece, taken);
        if (taken < static_cast<std::size_t>(got))
            return EFBIG;
        left -= taken;
    }
}

std::string readFile(const std::string& path, std::size_t limit) {
    std::string bytes;
    readFile(path, bytes, limit);
    return bytes;
}

}  // namespace host
