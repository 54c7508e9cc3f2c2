#include "platform/posix/read_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/descriptor.h"

namespace host {

std::string readFile(const std::string& path) {
    std::string bytes;
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    char piece[4096];
    while (file.isOpen()) {
        const ssize_t got = ::read(file.number(), piece, sizeof piece);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        bytes.append(piece, static_cast<std::size_t>(got));
    }
    return bytes;
}

}  // namespace host
