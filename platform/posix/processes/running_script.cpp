#include "platform/posix/processes/running_script.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "platform/posix/files/descriptor.h"
#include "platform/posix/files/read_file.h"
#include "platform/posix/processes/proc_files.h"

namespace host {

namespace {

bool isClosedOnExec(const std::string& process, const std::string& descriptor) {
    const std::string information = readFile(process + "/fdinfo/" + descriptor);
    const std::string label = "flags:";
    const std::size_t at = information.find(label);
    return at != std::string::npos &&
           (std::strtol(&information[at + label.size()], nullptr, 8) & O_CLOEXEC) != 0;
}

// Returns the open file called `name` when there is exactly one. A shell opens its script at
// descriptor 10 or above, because a script may use those below for itself, and does not pass it on
// to other programs.
std::string heldFile(const std::string& process, const std::string& name) {
    constexpr long FIRST_OF_THE_SHELL = 10;
    std::string held;
    for (const std::string& descriptor : namesIn(process + "/fd")) {
        const std::string link = process + "/fd/" + descriptor;
        std::string path = readLink(link);
        removeDeletedMark(path);
        if (std::strtol(descriptor.c_str(), nullptr, 10) < FIRST_OF_THE_SHELL ||
            baseName(path) != name || !isClosedOnExec(process, descriptor))
            continue;
        if (!held.empty())
            return {};
        held = link;
    }
    return held;
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

// Returns the interpreter in the first line of a script and its argument; like the kernel, takes
// everything after the interpreter as one argument. Empty when the file is not a script.
std::vector<std::string> interpreterOf(const std::string& script) {
    const Descriptor file(::open(script.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    char start[256];  // the kernel reads no more
    const ssize_t got = file.isOpen() ? ::read(file.number(), start, sizeof start) : -1;
    if (got < 2 || start[0] != '#' || start[1] != '!')
        return {};
    std::string line(start + 2, static_cast<std::size_t>(got - 2));
    line.resize(std::min(line.find('\n'), line.size()));
    std::vector<std::string> words = wordsOf(line);
    if (words.size() < 2)
        return words;
    const bool isEnv = baseName(words[0]) == "env";
    if (isEnv && words[1] == "-S")
        return {words.begin() + 2, words.end()};
    const std::string rest =
        line.substr(line.find(words[1], line.find(words[0]) + words[0].size()));
    const std::string argument = rest.substr(0, rest.find_last_not_of(" \t") + 1);
    return isEnv ? std::vector<std::string>{argument} : std::vector{words[0], argument};
}

bool isProgramOf(const std::string& process, const std::string& name) {
    const FileIdentity program = identityOf(process + "/exe");
    if (!program.exists() || name.find('/') != std::string::npos)
        return program.exists() && program == identityOf(name);
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (program == identityOf(folder + "/" + name))
            return true;
    return false;
}

}  // namespace

std::vector<std::string> argumentsOf(const std::string& process) {
    std::vector<std::string> arguments;
    std::istringstream line(readFile(process + "/cmdline"));
    for (std::string argument; std::getline(line, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

std::string fileOfArgument(const std::string& process, const std::string& argument) {
    if (argument.compare(0, 1, "-") == 0)
        return {};
    const bool absolute = argument.compare(0, 1, "/") == 0;
    return absolute && identityOf(argument).exists() ? argument
                                                     : heldFile(process, baseName(argument));
}

bool isRunBy(const std::string& process, const std::string& script,
             const std::vector<std::string>& before) {
    const std::vector<std::string> interpreter = interpreterOf(script);
    return !interpreter.empty() && isProgramOf(process, interpreter[0]) &&
           std::vector<std::string>(interpreter.begin() + 1, interpreter.end()) == before;
}

}  // namespace host
