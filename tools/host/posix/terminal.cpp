#include "tools/host/terminal.h"

#include <unistd.h>

bool outputIsTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

bool errorsAreTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

std::vector<std::string> commandLine(int argc, char** argv) {
    return {argv + 1, argv + argc};
}
