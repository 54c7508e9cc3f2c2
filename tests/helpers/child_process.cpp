#include "tests/helpers/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "platform/posix/read_file.h"
#include "tests/helpers/scratch.h"

namespace {

std::vector<std::string> wordsOf(const std::vector<std::string>& command,
                                 const ChildProcess::Variables& variables) {
    std::vector<std::string> words;
    if (!variables.empty())
        words.push_back("env");
    for (const auto& [name, value] : variables)
        words.push_back(value.empty() ? "--unset=" + name : name + "=" + value);
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + PATIENCE;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Variables& variables)
    : folder_(makeScratchFolder()) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, (folder_ + "/out").c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, (folder_ + "/err").c_str(), flags, 0600);
    std::vector<std::string> words = wordsOf(command, variables);
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    if (posix_spawnp(&id_, pointers[0], &actions, nullptr, pointers.data(), environ) != 0)
        id_ = -1;
    posix_spawn_file_actions_destroy(&actions);
}

ChildProcess::~ChildProcess() {
    if (isRunning()) {
        ::kill(id_, SIGTERM);
        ::kill(id_, SIGCONT);
        ::waitpid(id_, nullptr, 0);
    }
    removeScratchFolder(folder_);
}

bool ChildProcess::isRunning() {
    int status = 0;
    if (id_ > 0 && !status_ && ::waitpid(id_, &status, WNOHANG) == id_)
        status_ = status;
    return id_ > 0 && !status_;
}

std::optional<int> ChildProcess::waitForEnd() {
    if (!waitUntil([this] { return !isRunning(); }) || !status_ || !WIFEXITED(*status_))
        return std::nullopt;
    return WEXITSTATUS(*status_);
}

std::string ChildProcess::output() const {
    return host::readFile(folder_ + "/out");
}

std::string ChildProcess::errors() const {
    return host::readFile(folder_ + "/err");
}
