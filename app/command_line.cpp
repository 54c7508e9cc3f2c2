#include "app/command_line.h"

CommandLine parseCommandLine(const std::string& line) {
    static const std::string AUTO_SWITCH = "/auto";
    CommandLine result;
    // "/auto" alone does not select automatic mode; something must precede it. Kept.
    if (line.size() > AUTO_SWITCH.size() &&
        line.compare(line.size() - AUTO_SWITCH.size(), AUTO_SWITCH.size(), AUTO_SWITCH) == 0) {
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
