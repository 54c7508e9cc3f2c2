// One run of the updater, without a window, in a process of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/faults/fault.h"
#include "tests/helpers/device_folder.h"

enum class RunEnd {
    Complete,  // the main application was started by itself
    Failed,    // the screen asked for a key, and started it then
    Updating,  // no end within the frames that it was given
    Killed,    // by its fault
    Crashed,
    Hung,
};
const char* nameOf(RunEnd end);

struct UpdateRun {
    RunEnd end = RunEnd::Crashed;
    bool hadWayOut = false;                // the STOP key ended the process
    bool wroteOutside = false;             // a call would have changed something outside the folder
    std::vector<std::string> calls;        // names of the file calls, in order
    std::vector<std::string> loggedLines;  // messages that the log was given, in order
};

struct RunPlan {
    Fault fault;
    bool guiDataLocked = false;
};

// Plugs the operator in too: START is pressed on every frame, STOP when the run has ended. The
// start of the main application is refused, so that the way out without it is taken.
UpdateRun runUpdate(const DeviceFolder& device, const RunPlan& plan);
