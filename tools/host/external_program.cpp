#include "tools/host/external_program.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "platform/posix/files/read_file.h"
#include "support/open_file.h"

namespace {

// An unnamed temporary file for one of the program's streams. A pipe could fill up, and both
// processes would wait for each other.
class StreamFile {
  public:
    StreamFile() : file_(std::tmpfile()) {
        if (file_ == nullptr)
            throw std::runtime_error("cannot make a temporary file: " +
                                     std::generic_category().message(errno));
    }

    int descriptor() const { return ::fileno(file_.get()); }

    void write(const std::string& text) {
        std::fwrite(text.data(), 1, text.size(), file_.get());
        std::rewind(file_.get());
    }

    std::string read() { return host::readFile("/proc/self/fd/" + std::to_string(descriptor())); }

  private:
    FilePointer file_;
};

[[noreturn]] void become(const std::vector<std::string>& arguments, const StreamFile& input,
                         const StreamFile& output, const StreamFile& errors) {
    const char* const path = std::getenv("PATH");
    ::setenv("PATH",
             (std::string(path != nullptr ? path : "/usr/bin:/bin") + ":/usr/sbin:/sbin").c_str(),
             1);
    ::setenv("LC_ALL", "C.UTF-8", 1);
    ::setenv("TZ", "UTC", 1);
    ::dup2(input.descriptor(), STDIN_FILENO);
    ::dup2(output.descriptor(), STDOUT_FILENO);
    ::dup2(errors.descriptor(), STDERR_FILENO);
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    ::execvp(words[0], words.data());
    ::_exit(127);
}

}  // namespace

std::string runExternalProgram(const std::vector<std::string>& arguments,
                               const std::string& input) {
    StreamFile in;
    StreamFile out;
    StreamFile errors;
    in.write(input);
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0)
        become(arguments, in, out, errors);
    if (process < 0)
        throw std::runtime_error("cannot start " + arguments.front() + ": " +
                                 std::generic_category().message(errno));
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    constexpr int NOT_FOUND = 127;
    if (WIFEXITED(status) && WEXITSTATUS(status) == NOT_FOUND)
        throw std::runtime_error("the program " + arguments.front() +
                                 " is not installed; install Debian's packages mtools, dosfstools "
                                 "and fdisk");
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(arguments.front() + " failed: " + errors.read() + out.read());
    return out.read();
}
