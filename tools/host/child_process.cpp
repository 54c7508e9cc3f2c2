#include "tools/host/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace {

bool liesIn(const fs::path& program, const fs::path& folder) {
    const std::string start = folder.string() + "/";
    return program == folder || program.string().compare(0, start.size(), start) == 0;
}

[[noreturn]] void runProgram(char* const* arguments, int output) {
    ::setpgid(0, 0);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    ::execvp(arguments[0], arguments);
    std::perror(arguments[0]);
    ::_exit(127);
}

}  // namespace

fs::path ownFolder() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

pid_t startProcess(std::vector<std::string> command, const fs::path& output) {
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (std::string& word : command)
        words.push_back(word.data());
    words.push_back(nullptr);

    const int file = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const pid_t process = file < 0 ? -1 : ::fork();
    if (process == 0)
        runProgram(words.data(), file);
    if (file >= 0)
        ::close(file);
    if (process < 0)
        throw std::runtime_error("cannot start " + command.front() + ": " +
                                 std::generic_category().message(errno));
    return process;
}

bool hasEnded(pid_t process, int& exitCode) {
    int status = 0;
    if (::waitpid(process, &status, WNOHANG) != process)
        return false;
    exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return true;
}

std::vector<pid_t> processesOf(const fs::path& program) {
    std::vector<pid_t> found;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const fs::path target = fs::read_symlink(entry.path() / "exe", error);
        if (!error && liesIn(target, program))
            found.push_back(static_cast<pid_t>(std::strtol(name.c_str(), nullptr, 10)));
    }
    return found;
}
