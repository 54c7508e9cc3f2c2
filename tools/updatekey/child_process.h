// The updater as a process, the application that it starts, and the ending of both.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

// The folder of the program that runs.
std::filesystem::path ownFolder();

// Starts a program in a process group of its own, its output going to `output`. Returns its number.
// Throws std::runtime_error when that fails.
pid_t startProcess(const std::vector<std::string>& arguments,
                   const std::map<std::string, std::string>& environment,
                   const std::filesystem::path& output);

// Whether the process has ended; `exitCode` is then its code, or -1 when a signal ended it.
bool hasEnded(pid_t process, int& exitCode);

// The processes whose program is `program`, or lies in it when it is a folder.
std::vector<pid_t> processesOf(const std::filesystem::path& program);

// The process group that a process belongs to.
pid_t groupOf(pid_t process);
