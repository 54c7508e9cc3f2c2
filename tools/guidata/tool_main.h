// How the tools that make the GUI data begin and end: the options of a tool, its work, and the exit
// code that comes of it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

enum ExitCode : int {
    EXIT_CODE_DONE = 0,
    EXIT_CODE_FAILED = 1,  // an input that cannot be used or an output that cannot be written
    EXIT_CODE_USAGE = 2,   // a command line that makes no sense
};

struct NotNegative {};

struct Between {
    double least;
    double most;
};

using OneOf = std::vector<int>;

struct ToolOption {
    // Of the alternatives exactly one is required.
    enum Presence { OPTIONAL, REQUIRED, ALTERNATIVE };

    const char* name;  // as in "--output"; without the dashes it stands for a place
    std::variant<std::string*, std::vector<std::string>*, int*, uint32_t*, double*> value;
    const char* help;
    std::variant<std::monostate, NotNegative, Between, OneOf> limits = {};
    Presence presence = OPTIONAL;
    std::vector<std::string> needs = {};  // names of options that must be given beside it
    bool showsDefault = false;            // whether the help tells what the value is without it
};

struct Tool {
    const char* name;
    const char* description;
    std::vector<ToolOption> options;
    std::function<ExitCode()> work;
};

// Reads the command line into the values of the options and does the work. Returns the exit code;
// the work is not done when help was asked for and printed, or when a mistake was reported.
int runTool(const Tool& tool, int argc, char** argv);

// Reports `message` on standard error, and is the exit code that goes with it.
ExitCode fail(const char* tool, const std::string& message);
