// The main program of the tools that make the GUI data: parses options, runs the tool, and returns
// exit codes.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

struct Tool {
    const char* name;
    const char* description;
    std::function<void(CLI::App& app)> addOptions;
    std::function<void()> work;  // throws when it fails
};

// Parses the command line and calls the tool's work, unless help was requested or the command line
// is invalid. Prints what the work throws. Returns the exit code: 0, or 2 after wrong usage and
// after a failure.
int runTool(const Tool& tool, int argc, char** argv);

// Limits the value of an option to a range of numbers, and adds the range to its help.
CLI::Option* limit(CLI::Option* option, int least, int most);
