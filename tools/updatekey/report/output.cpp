#include "tools/updatekey/report/output.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <stdexcept>
#include <system_error>

#include "tools/host/terminal.h"

namespace {

bool wantsColours() {
    const char* const noColour = std::getenv("NO_COLOR");
    return outputIsTerminal() && (noColour == nullptr || *noColour == '\0');
}

// Colours the first word of an error red and that of a warning yellow.
std::string coloured(const std::string& text) {
    static const std::regex ERROR_WORD("(^|\n)(error:)");
    static const std::regex WARNING_WORD("(^|\n)(warning:)");
    const std::string red = std::regex_replace(text, ERROR_WORD, "$1\x1b[31m$2\x1b[0m");
    return std::regex_replace(red, WARNING_WORD, "$1\x1b[33m$2\x1b[0m");
}

}  // namespace

void show(const OutputOptions& options, const std::string& text, const std::string& shortText,
          const std::string& json) {
    if (options.json)
        return writeOut(json);
    const std::string& shown = options.quiet ? shortText : text;
    writeOut(wantsColours() ? coloured(shown) : shown);
}

void writeOut(const std::string& text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!written || std::fflush(stdout) != 0)
        throw std::runtime_error("cannot write to the standard output: " +
                                 std::generic_category().message(errno));
}
