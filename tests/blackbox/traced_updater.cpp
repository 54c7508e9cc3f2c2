// The updater, changed to print its process and window calls to the standard output.

#include <cstdio>

#include "platform/entry_point.h"
#include "platform/posix/call_hook.h"
#include "platform/posix/command_line.h"

int main(int argc, char** argv) {
    setCallHook([](const HookedCall& call) -> DWORD {
        const std::string name = call.name;
        static bool slept = false;
        for (const char* const told :
             {"OpenProcess", "Snapshot", "Terminate", "CloseHandle", "Class", "Window", "Metrics",
              "Sleep", "Translate", "Dispatch", "Quit"}) {
            // Sleep is told once: the number of frames differs in each run.
            if (name.find(told) == std::string::npos || (name == "Sleep" && slept))
                continue;
            slept |= name == "Sleep";
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
