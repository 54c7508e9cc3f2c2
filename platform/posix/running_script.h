// The script that a process runs. The kernel keeps the interpreter only. What is left to see is the
// file that a shell holds open while it reads it, and the arguments with which the kernel starts an
// interpreter: those of the script's first line, then the script's path.
#pragma once

#include <string>
#include <vector>

namespace host {

// More arguments than this never stand in front of a script.
constexpr std::size_t LAST_SCRIPT_ARGUMENT = 4;

// `process` is a folder of /proc ("/proc/42"). The program's own name comes first.
std::vector<std::string> argumentsOf(const std::string& process);

// The file that `argument` names for the process, as a path to open: the one at an absolute path,
// or the one that the process holds open under that name, as the folder from which a relative path
// was taken may be another one by now. Empty when there is none, or more than one.
std::string fileOfArgument(const std::string& process, const std::string& argument);

// Whether the process is the interpreter that the first line of `script` asks for, and that line's
// arguments are `before`, those in front of the script. An interpreter that the line looks for with
// "env" is looked for in the same way.
bool isRunBy(const std::string& process, const std::string& script,
             const std::vector<std::string>& before);

}  // namespace host
