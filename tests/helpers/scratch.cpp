#include "tests/helpers/scratch.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "platform/posix/files/read_file.h"

namespace fs = std::filesystem;

namespace {

// Sends a signal to all copies of the test process, which have `lock` open, and to all programs
// with `variable` in their environment. Returns whether there were any.
bool signalAll(int lock, const std::string& variable, int number) {
    bool found = false;
    std::error_code error;
    const fs::path lockFile = fs::read_symlink("/proc/self/fd/" + std::to_string(lock));
    const auto isLock = [&](const fs::path& file) {
        return fs::read_symlink(file, error) == lockFile;
    };
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        const pid_t process = std::atoi(entry.path().filename().c_str());
        if (process <= 0 || process == ::getpid())
            continue;
        const std::string variables = '\0' + host::readFile(entry.path() / "environ");
        const fs::directory_iterator files(entry.path() / "fd", error);
        if (variables.find('\0' + variable + '\0') != std::string::npos ||
            std::any_of(files, fs::directory_iterator(), isLock))
            found = ::kill(process, number) == 0 || found;
    }
    return found;
}

// Waits for the lock, which the test process holds until it ends, then cleans up.
void watch(int lock, const fs::path& folder, struct flock whole) {
    while (::fcntl(lock, F_SETLKW, &whole) != 0) {
    }
    // First SIGTERM, so that an X server removes its lock file; then SIGKILL, for stopped programs.
    const std::string variable = "TMPDIR=" + folder.string();
    for (int tries = 0; signalAll(lock, variable, tries < 1000 ? SIGTERM : SIGKILL); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::error_code error;
    fs::remove_all(folder, error);
}

// Creates this process's folder and a watchdog process that shares no parent, terminal or stream
// with it, so that nothing ends both. Programs started from now on are recognised by their TMPDIR.
fs::path startWatch() {
    std::string pattern = (fs::temp_directory_path() / "updater-test-XXXXXX").string();
    const fs::path folder = ::mkdtemp(pattern.data());
    // A forked process inherits the open file, but not the lock.
    const int lock = ::memfd_create(folder.filename().c_str(), MFD_CLOEXEC);
    struct flock whole {};
    whole.l_type = F_WRLCK;
    if (::fcntl(lock, F_SETLK, &whole) != 0)
        std::abort();
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        if (::fork() != 0)
            ::_exit(0);
        const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(nowhere, stream);
        watch(lock, folder, whole);
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    ::setenv("TMPDIR", folder.c_str(), 1);
    return folder;
}

}  // namespace

fs::path makeScratchFolder() {
    static const fs::path BASE = startWatch();
    // Another process may remove the base while it is empty, before the folder in it is created.
    for (;;) {
        std::error_code error;
        fs::create_directories(BASE, error);
        std::string pattern = (BASE / "XXXXXX").string();
        if (::mkdtemp(pattern.data()) != nullptr)
            return pattern;
        if (errno != ENOENT)
            std::abort();
    }
}

void removeScratchFolder(const fs::path& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
    fs::remove(folder.parent_path(), error);
}
