// What the command line asks for.
#pragma once

#include <string>

struct CommandLine {
    bool autoMode = false;
    std::string firstArgument;
    std::string secondArgument;
};

// A line that has something in front of "/auto" at its end asks for automatic mode. Any other line
// is split at its first ';' into two arguments; without one both are empty.
CommandLine parseCommandLine(const std::string& line);
