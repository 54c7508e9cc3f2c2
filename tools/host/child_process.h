// Runs the updater as a child process, and ends it and the application that it starts.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

// Returns the folder that contains the running program.
std::filesystem::path ownFolder();

// Starts a program in a new process group, with its output written to `output`. Returns its process
// id. Throws std::runtime_error on failure.
pid_t startProcess(std::vector<std::string> command, const std::filesystem::path& output);

// Whether the process has ended. `exitCode` is then its exit code, or -1 when a signal ended it.
bool hasEnded(pid_t process, int& exitCode);

// Returns the processes that run `program` or, when it is a folder, any program in it.
std::vector<pid_t> processesOf(const std::filesystem::path& program);
