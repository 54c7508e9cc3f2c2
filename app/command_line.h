// What the command line asks for.
#pragma once

#include <string>

struct CommandLine {
    bool autoMode = false;
    std::string firstArgument;
    std::string secondArgument;
};

// A line that ends in "/auto", with at least one character before it, selects automatic mode. Any
// other line is split at its first ';' into two arguments; both are empty when it has no ';'.
CommandLine parseCommandLine(const std::string& line);
