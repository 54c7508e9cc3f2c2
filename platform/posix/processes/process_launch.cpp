// CreateProcessW. Starts any executable file of the device, including scripts, by its absolute
// path. The new process is detached: it has a session of its own, /dev/null as its standard
// streams, no other open files, and default signal handling. Its current folder is that of the
// updater.

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"
#include "platform/posix/processes/device_processes.h"

using host::fail;

namespace {

// Returns 0, or the errno of the failed start.
int startDetached(const std::string& path) {
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDWR, 0);
    ::posix_spawn_file_actions_adddup2(&files, STDIN_FILENO, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, STDIN_FILENO, STDERR_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    sigset_t signals;
    ::sigfillset(&signals);
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes, &signals);
    char* const arguments[] = {const_cast<char*>(path.c_str()), nullptr};
    pid_t process = 0;
    const int error =
        ::posix_spawn(&process, path.c_str(), &files, &attributes, arguments, environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    return error;
}

}  // namespace

BOOL CreateProcessW(LPCWSTR application, LPWSTR, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*,
                    BOOL inherits, DWORD flags, void*, LPCWSTR, STARTUPINFOW*,
                    PROCESS_INFORMATION*) {
    if (host::refusedByHook("CreateProcessW", application, inherits, flags))
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
