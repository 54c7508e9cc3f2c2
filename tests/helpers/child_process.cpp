#include "tests/helpers/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <thread>

#include "platform/posix/files/read_file.h"
#include "tests/helpers/scratch.h"

bool waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + PATIENCE;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

ChildProcess::ChildProcess(std::vector<std::string> command, const Variables& variables)
    : folder_(makeScratchFolder()) {
    int started[2] = {};
    if (::pipe2(started, O_CLOEXEC) != 0)
        std::abort();
    id_ = ::fork();
    if (id_ != 0) {
        // The other end of the pipe closes when the child executes the program.
        char byte = 0;
        ::close(started[1]);
        while (::read(started[0], &byte, 1) > 0) {
        }
        ::close(started[0]);
        return;
    }
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);  // ends the program with a test that is killed
    int stream = STDIN_FILENO;
    for (const std::string& path : {std::string("/dev/null"), folder_ + "/out", folder_ + "/err"})
        ::dup2(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600), stream++);
    for (const auto& [name, value] : variables)
        value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> words;
    for (std::string& word : command)
        words.push_back(word.data());
    words.push_back(nullptr);
    ::execvp(words[0], words.data());
    ::_exit(127);
}

ChildProcess::~ChildProcess() {
    // An X server that is just about to wait misses a single signal.
    while (isRunning()) {
        ::kill(id_, SIGTERM);
        ::kill(id_, SIGCONT);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    removeScratchFolder(folder_);
}

bool ChildProcess::isRunning() {
    int status = 0;
    if (!status_ && ::waitpid(id_, &status, WNOHANG) == id_)
        status_ = status;
    return !status_;
}

std::optional<int> ChildProcess::waitForEnd() {
    if (!waitUntil([this] { return !isRunning(); }) || !WIFEXITED(*status_))
        return std::nullopt;
    return WEXITSTATUS(*status_);
}

std::string ChildProcess::output() const {
    return host::readFile(folder_ + "/out");
}

std::string ChildProcess::errors() const {
    return host::readFile(folder_ + "/err");
}
