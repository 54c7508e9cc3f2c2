#include "platform/posix/files/read_file.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/files/descriptor.h"

namespace host {
namespace {

// Waits for data from a pipe whose other end is open, such as the output of a shell command. Files
// are opened with O_NONBLOCK, so that opening a named pipe does not wait for its other end.
void waitForInput(int file) {
    pollfd wanted{file, POLLIN, 0};
    ::poll(&wanted, 1, -1);
}

}  // namespace

int readFile(const std::string& path, std::string& bytes) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen())
        return errno;
    char piece[4096];
    for (;;) {
        const ssize_t got = ::read(file.number(), piece, sizeof piece);
        if (got > 0)
            bytes.append(piece, static_cast<std::size_t>(got));
        else if (got == 0)
            return 0;
        else if (errno == EAGAIN)
            waitForInput(file.number());
        else
            return errno;
    }
}

std::string readFile(const std::string& path) {
    std::string bytes;
    readFile(path, bytes);
    return bytes;
}

}  // namespace host
