#include "tests/helpers/scratch.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "platform/posix/read_file.h"

namespace fs = std::filesystem;

namespace {

// Sends a signal to all programs with `variable` in their environment. Returns whether there were
// any.
bool signalPrograms(const std::string& variable, int number) {
    bool found = false;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        const pid_t process = std::atoi(entry.path().filename().c_str());
        const std::string variables = process > 0 ? host::readFile(entry.path() / "environ") : "";
        if (('\0' + variables).find('\0' + variable + '\0') != std::string::npos)
            found = ::kill(process, number) == 0 || found;
    }
    return found;
}

// Waits until all other ends of the pipe are closed, then cleans up.
void watch(int pipe, const fs::path& folder) {
    char byte = 0;
    while (::read(pipe, &byte, 1) < 0) {
    }
    // First SIGTERM, so that an X server removes its lock file; then SIGKILL, for stopped programs.
    const std::string variable = "TMPDIR=" + folder.string();
    for (int tries = 0; signalPrograms(variable, tries < 1000 ? SIGTERM : SIGKILL); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::error_code error;
    fs::remove_all(folder, error);
}

// Creates this process's folder and a watchdog process that shares no parent, terminal or stream
// with it, so that nothing ends both. Programs started from now on are recognised by their TMPDIR.
fs::path startWatch() {
    std::string pattern = (fs::temp_directory_path() / "updater-test-XXXXXX").string();
    const fs::path folder = ::mkdtemp(pattern.data());
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        std::abort();
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        if (::fork() != 0)
            ::_exit(0);
        const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(nowhere, stream);
        ::close(ends[1]);
        watch(ends[0], folder);
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    ::close(ends[0]);
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
