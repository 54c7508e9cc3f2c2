#include "tests/helpers/child_process.h"

#include <thread>

#include "tests/helpers/scratch.h"
#include "tools/host/host_file.h"

bool waitUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + PATIENCE;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

namespace {

// Ends the program with a test that is killed.
std::vector<std::string> endingWithTheTest(std::vector<std::string> command) {
    command.insert(command.begin(), {"setpriv", "--pdeathsig", "TERM"});
    return command;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Variables& variables)
    : folder_(makeScratchFolder()),
      process_({endingWithTheTest(command), variables, {}, folder_ + "/out", folder_ + "/err"}) {
    const std::string program = "/proc/" + std::to_string(id()) + "/exe";
    std::error_code error;
    waitUntil([&] {
        return std::filesystem::read_symlink(program, error).filename() != "setpriv" ||
               !isRunning();
    });
}

ChildProcess::~ChildProcess() {
    process_.end();
    removeScratchFolder(folder_);
}

std::optional<int> ChildProcess::waitForEnd() {
    if (!waitUntil([this] { return !isRunning(); }) || process_.exitCode() < 0)
        return std::nullopt;
    return process_.exitCode();
}

std::string ChildProcess::output() const {
    return readHostFileIfThere(folder_ + "/out");
}

std::string ChildProcess::errors() const {
    return readHostFileIfThere(folder_ + "/err");
}
