// The updater, changed to print its process and window calls to the standard output.

#include <cstdio>

#include "platform/entry_point.h"
#include "platform/posix/call_hook.h"
#include "platform/posix/command_line.h"

int main(int argc, char** argv) {
    setCallHook([](const HookedCall& call) -> DWORD {
        const std::string name = call.name;
        for (const char* const told : {"OpenProcess", "Terminate", "Class", "Window", "Metrics",
                                       "Translate", "Dispatch", "Quit"}) {
            if (name.find(told) == std::string::npos)
                continue;
            std::printf("%s", call.name);
            // The process id is omitted: it differs in each run.
            for (std::size_t i = 0; i < call.arguments.size() && (i < 2 || told != name); ++i)
                std::printf(" %s", call.arguments[i].c_str());
            std::printf("\n");
        }
        return ERROR_SUCCESS;
    });
    host::setCommandLine(argc, argv);
    return runUpdater();
}
