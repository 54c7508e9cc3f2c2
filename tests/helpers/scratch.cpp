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

// Sends a signal to all programs that have `variable` in their environment. Returns whether there
// was one.
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

// Waits until nobody holds the other end of the pipe any more, then cleans up.
void watch(int pipe, const fs::path& folder) {
    char byte = 0;
    while (::read(pipe, &byte, 1) < 0) {
    }
    // A screen takes its lock file away when it is asked to end; a stopped program must be killed.
    const std::string variable = "TMPDIR=" + folder.string();
    for (int tries = 0; signalPrograms(variable, tries < 100 ? SIGTERM : SIGKILL); ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::error_code error;
    fs::remove_all(folder, error);
}

// The folder of this process. Its watchman has no parent, terminal or stream in common with it, so
// that nothing ends them both. What is started from now on is known by its folder for temporary
// files.
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
    static const fs::path base = startWatch();
    // Another process that works in the base may remove it, empty, in between.
    for (;;) {
        std::error_code error;
        fs::create_directories(base, error);
        std::string pattern = (base / "XXXXXX").string();
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
