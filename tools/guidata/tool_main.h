// The main program of the tools that make the GUI data: parses options, runs the tool, and returns
// exit codes.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

enum ExitCode : int {
    ExitDone = 0,
    ExitFailed = 1,  // an input is unusable or an output cannot be written
    ExitUsage = 2,   // an invalid command line
};

struct Tool {
    const char* name;
    const char* description;
    std::function<void(CLI::App& app)> addOptions;
    std::function<ExitCode()> work;
};

// Parses the command line and calls the tool's work, unless help was requested or the command line
// is invalid. Returns the exit code.
int runTool(const Tool& tool, int argc, char** argv);

// Limits the value of an option to a range of numbers, and adds the range to its help.
CLI::Option* limit(CLI::Option* option, int least, int most);

// Prints `message` to standard error and returns the exit code for a failure.
ExitCode fail(const char* tool, const std::string& message);
