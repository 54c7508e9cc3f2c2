#include "app/command_line.h"

CommandLine parseCommandLine(const std::string& line) {
    static const std::string autoSwitch = "/auto";
    CommandLine result;
    // The switch alone does not count: a command line begins with the program that it starts.
    if (line.size() > autoSwitch.size() &&
        line.compare(line.size() - autoSwitch.size(), autoSwitch.size(), autoSwitch) == 0) {
        result.autoMode = true;
        return result;
    }
    const std::size_t separator = line.find(';');
    if (separator != std::string::npos) {
        result.firstArgument = line.substr(0, separator);
        result.secondArgument = line.substr(separator + 1);
    }
    return result;
}
