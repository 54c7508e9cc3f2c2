// Debugger output goes to standard error, one line per message.

#include "platform/posix/debug_output.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/descriptor.h"
#include "platform/utf.h"

namespace host {

// A signal handler may call this.
void tell(std::string_view line) {
    char text[PIPE_BUF];  // what a pipe takes as a whole
    const std::size_t size = line.copy(text, sizeof text - 1);
    text[size] = '\n';
    struct stat status {};
    if (::fstat(STDERR_FILENO, &status) != 0)
        return;
    if (S_ISSOCK(status.st_mode)) {
        ::send(STDERR_FILENO, text, size + 1, MSG_DONTWAIT);
        return;
    }
    // A pipe or a terminal is opened once more, because O_NONBLOCK on standard error itself would
    // also hold for the programs that share it.
    const bool mayWait = S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode);
    const Descriptor own(
        mayWait ? ::open("/proc/self/fd/2", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC) : -1);
    pollfd ready{STDERR_FILENO, POLLOUT, 0};
    if (own.isOpen() || !mayWait || ::poll(&ready, 1, 0) == 1)
        static_cast<void>(::write(own.isOpen() ? own.number() : STDERR_FILENO, text, size + 1) ==
                          0);
}

}  // namespace host

void OutputDebugStringW(LPCWSTR text) {
    if (host::errorFromHook("OutputDebugStringW", text) != ERROR_SUCCESS)
        return;
    std::string line = host::toUtf8(text);
    line.erase(line.find_last_not_of("\r\n") + 1);
    for (char& c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F)
            c = ' ';
    }
    host::tell(line);
}
