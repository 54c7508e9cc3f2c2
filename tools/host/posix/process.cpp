#include "tools/host/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "tools/host/host_file.h"
#include "tools/host/interrupt.h"
#include "tools/host/temporary_folder.h"

namespace fs = std::filesystem;

namespace {

// Returns this process's environment with changes, as "NAME=VALUE".
std::vector<std::string> environmentWith(const std::map<std::string, std::string>& changes) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (changes.count(text.substr(0, text.find('='))) == 0)
            variables.push_back(text);
    }
    for (const auto& [name, value] : changes)
        if (!value.empty())
            variables.push_back(std::string(name).append("=").append(value));
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::string packageOf(const std::string& program) {
    static const std::map<std::string, const char*> PACKAGES = {{"Xvfb", "xvfb"},
                                                                {"mcopy", "mtools"},
                                                                {"mkfs.vfat", "dosfstools"},
                                                                {"sfdisk", "fdisk"},
                                                                {"udisksctl", "udisks2"}};
    const auto package = PACKAGES.find(program);
    return package == PACKAGES.end()
               ? std::string()
               : std::string("; it is in Debian's package ") + package->second;
}

// How a process starts: its streams, in a group of its own, and with no signal blocked or ignored.
class StartUp {
  public:
    explicit StartUp(const Command& command) {
        ::posix_spawn_file_actions_init(&files_);
        ::posix_spawnattr_init(&attributes_);
        open(STDIN_FILENO, command.input, O_RDONLY);
        open(STDOUT_FILENO, command.output, O_WRONLY | O_CREAT | O_TRUNC);
        if (command.errors.empty())
            ::posix_spawn_file_actions_adddup2(&files_, STDOUT_FILENO, STDERR_FILENO);
        else
            open(STDERR_FILENO, command.errors, O_WRONLY | O_CREAT | O_TRUNC);
        sigset_t none;
        sigset_t pipe;
        ::sigemptyset(&none);
        ::sigemptyset(&pipe);
        ::sigaddset(&pipe, SIGPIPE);
        ::posix_spawnattr_setsigmask(&attributes_, &none);
        ::posix_spawnattr_setsigdefault(&attributes_, &pipe);
        ::posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    StartUp(const StartUp&) = delete;
    StartUp& operator=(const StartUp&) = delete;
    ~StartUp() {
        ::posix_spawn_file_actions_destroy(&files_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    pid_t start(const Command& command) const {
        std::vector<std::string> words = command.words;
        std::vector<std::string> variables = environmentWith(command.variables);
        pid_t process = -1;
        const int error = ::posix_spawnp(&process, words.front().c_str(), &files_, &attributes_,
                                         pointersTo(words).data(), pointersTo(variables).data());
        if (error == ENOENT)
            throw std::runtime_error("the program " + words.front() + " is not installed" +
                                     packageOf(words.front()));
        if (error != 0)
            throw std::runtime_error("cannot start " + words.front() + ": " +
                                     std::generic_category().message(error));
        return process;
    }

  private:
    void open(int stream, const fs::path& file, int flags) {
        ::posix_spawn_file_actions_addopen(&files_, stream,
                                           file.empty() ? "/dev/null" : file.c_str(), flags, 0600);
    }

    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

// Ends a group of processes, by force when it does not end within five seconds.
void endGroup(pid_t group) {
    // A stopped process, or an X server that is just about to wait, misses a single signal.
    for (int tries = 0; ::kill(-group, tries < 500 ? SIGTERM : SIGKILL) == 0 && tries < 600;
         ++tries) {
        ::kill(-group, SIGCONT);
        ::waitpid(-group, nullptr, WNOHANG);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

}  // namespace

struct Process::State {
    explicit State(const Command& command)
        : id(StartUp(command).start(command)), leftover([group = id] { endGroup(group); }) {}

    pid_t id;
    std::optional<int> exitCode;
    Leftover leftover;
};

Process::Process(const Command& command) : state_(std::make_unique<State>(command)) {}

Process::~Process() {
    end();
}

long Process::id() const {
    return state_->id;
}

bool Process::hasEnded() {
    int status = 0;
    const pid_t ended = state_->exitCode ? 0 : ::waitpid(state_->id, &status, WNOHANG);
    if (ended != 0)
        state_->exitCode = ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return state_->exitCode.has_value();
}

int Process::wait() {
    while (!hasEnded())
        ::waitid(P_PID, static_cast<id_t>(state_->id), nullptr, WEXITED | WNOWAIT);
    return exitCode();
}

int Process::exitCode() const {
    return *state_->exitCode;
}

void Process::askToEnd() {
    ::kill(-state_->id, SIGTERM);
}

void Process::end() {
    endGroup(state_->id);
}

std::string outputOf(const std::vector<std::string>& words, const std::string& input) {
    // Files, because a pipe could fill up while both processes wait for each other.
    const TemporaryFolder folder(fs::temp_directory_path() / "updatekey-run");
    const fs::path in = folder.path() / "in";
    const fs::path out = folder.path() / "out";
    const fs::path errors = folder.path() / "errors";
    writeHostFile(in, input);
    [[maybe_unused]] static const bool EXTENDED = [] {
        const char* const path = std::getenv("PATH");
        const std::string places = path != nullptr ? path : "/usr/bin:/bin";
        return ::setenv("PATH", (places + ":/usr/sbin:/sbin").c_str(), 1) == 0;
    }();
    Process process({words, {{"LC_ALL", "C.UTF-8"}, {"TZ", "UTC"}}, in, out, errors});
    if (process.wait() != 0)
        throw std::runtime_error(words.front() + " failed: " + readHostFile(errors) +
                                 readHostFile(out));
    return readHostFile(out);
}
