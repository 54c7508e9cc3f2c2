#include "platform/posix/command_line.h"

#include <string>

#include "platform/posix/win32_api.h"
#include "platform/utf.h"

namespace {

std::u16string& commandLine() {
    static std::u16string& line = *new std::u16string;
    return line;
}

}  // namespace

namespace host {

void setCommandLine(int count, const char* const* arguments) {
    std::string line;
    for (int i = 0; i < count; ++i) {
        const std::string argument = arguments[i];
        const bool plain = !argument.empty() && argument.find_first_of(" \t") == std::string::npos;
        line += i > 0 ? " " : "";
        line += plain ? argument : "\"" + argument + "\"";
    }
    commandLine() = toUtf16(line);
}

}  // namespace host

LPWSTR GetCommandLineW() {
    return commandLine().data();
}
