// Finds the script that a process runs. The kernel records only the interpreter. Two traces of the
// script remain: the file that a shell keeps open while reading it, and the interpreter's command
// line, in which the kernel puts the arguments of the script's first line and then the script's
// path.
#pragma once

#include <string>
#include <vector>

namespace host {

// The first line of a script never has more arguments than this.
constexpr std::size_t LAST_SCRIPT_ARGUMENT = 4;

// Returns the arguments of a process, its program name first. `process` is a /proc folder such as
// "/proc/42".
std::vector<std::string> argumentsOf(const std::string& process);

// Returns the path of the file that `argument` names for the process: an absolute path itself, or
// the one file of that name that the process holds open, because its current folder may have
// changed since a relative path was given. Empty when there is no such file, or more than one.
std::string fileOfArgument(const std::string& process, const std::string& argument);

// Whether the process is the interpreter that the first line of `script` names, and `before`, the
// arguments before the script, are those of that line. Resolves "env" as "env" does.
bool isRunBy(const std::string& process, const std::string& script,
             const std::vector<std::string>& before);

}  // namespace host
