// CreateProcessW. Starts any executable file of the device, including scripts, by its absolute
// path. The new process is detached: it has a session of its own, is not a child of the updater,
// has /dev/null as its standard streams, inherits no open files, and has default signal handling.
// Its current folder is that of the updater.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"
#include "platform/posix/processes/proc_files.h"
#include "platform/posix/signals.h"

using host::fail;

namespace {

[[noreturn]] void tellFailure(int report) {
    const int error = errno;
    const ssize_t told = ::write(report, &error, sizeof error);
    ::_exit(told == sizeof error ? 1 : 2);
}

// Executes `path` in a new session. On failure, reports the errno through `report` and exits.
[[noreturn]] void becomeProgram(const char* path, int report) {
    ::setsid();
    host::giveSignalsBack();
    const int nothing = ::open("/dev/null", O_RDWR);
    for (int stream = 0; stream <= 2; ++stream)
        ::dup2(nothing, stream);
    ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    char* const arguments[] = {const_cast<char*>(path), nullptr};
    ::execv(path, arguments);
    tellFailure(report);
}

// Returns 0, or the errno of the failed start.
int startDetached(const std::string& path) {
    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0)
        return errno;
    const pid_t child = ::fork();
    if (child < 0) {
        const int error = errno;
        ::close(report[0]);
        ::close(report[1]);
        return error;
    }
    if (child == 0) {
        // Two forks: the program's parent exits at once, so that init adopts the program and no
        // zombie remains.
        const pid_t grandchild = ::fork();
        if (grandchild == 0)
            becomeProgram(path.c_str(), report[1]);
        if (grandchild < 0)
            tellFailure(report[1]);
        ::_exit(0);
    }
    ::close(report[1]);
    int error = 0;
    const ssize_t got = ::read(report[0], &error, sizeof error);
    ::close(report[0]);
    ::waitpid(child, nullptr, 0);
    return got == sizeof error ? error : 0;
}

}  // namespace

BOOL CreateProcessW(LPCWSTR application, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL,
                    DWORD, void*, LPCWSTR, STARTUPINFOW*, PROCESS_INFORMATION*) {
    if (host::refusedByHook("CreateProcessW", application))
        return FALSE;
    std::string path;
    if (const DWORD error = host::resolveName(application, path))
        return fail(error);
    const host::Descriptor program(host::openResolved(path, O_PATH));
    struct stat status {};
    if (!program.isOpen() || ::fstat(program.number(), &status) != 0)
        return fail(host::windowsError(errno, path));
    if (!S_ISREG(status.st_mode))
        return fail(ERROR_ACCESS_DENIED);
    const std::string opened = "/proc/self/fd/" + std::to_string(program.number());
    if (const int error = startDetached(host::readLink(opened)))
        return fail(host::windowsError(error, path));
    return TRUE;
}
