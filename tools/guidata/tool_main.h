// The common frame of the tools that make the GUI data: options, the tool's work, and exit codes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

enum ExitCode : int {
    ExitDone = 0,
    ExitFailed = 1,  // an input is unusable or an output cannot be written
    ExitUsage = 2,   // an invalid command line
};

struct NotNegative {};

struct Between {
    double least;
    double most;
};

using OneOf = std::vector<int>;

struct ToolOption {
    // Exactly one of the alternatives must be given.
    enum Presence { Optional, Required, Alternative };

    const char* name;  // such as "--output"; without dashes it is a positional argument
    std::variant<std::string*, std::vector<std::string>*, int*, uint32_t*, double*> value;
    const char* help;
    std::variant<std::monostate, NotNegative, Between, OneOf> limits = {};
    Presence presence = Optional;
    std::vector<std::string> needs = {};  // names of options that must be given with it
    bool showsDefault = false;            // whether the help shows the default value
};

struct Tool {
    const char* name;
    const char* description;
    std::vector<ToolOption> options;
    std::function<ExitCode()> work;
};

// Parses the command line into the options and calls the tool's work, unless help was requested or
// the command line is invalid. Returns the exit code.
int runTool(const Tool& tool, int argc, char** argv);

// Prints `message` to standard error and returns the exit code for a failure.
ExitCode fail(const char* tool, const std::string& message);
