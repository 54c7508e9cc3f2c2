// Fuzzes the parser of command lines: the two arguments, joined again, must equal the whole line.

#include <cstdlib>

#include "app/command_line.h"
#include "app/entry.h"

SimpleUI theScreen;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    const CommandLine parsed = parseCommandLine(line);
    const bool hasSeparator = line.find(';') != std::string::npos;
    const std::string joined = parsed.firstArgument + ";" + parsed.secondArgument;
    const std::string expected = hasSeparator && !parsed.autoMode ? line : ";";
    if (joined != expected)
        std::abort();
    return 0;
}
