// One run of the updater without a window, in a separate process.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/faults/fault.h"
#include "tests/helpers/device_folder.h"

enum class RunEnd {
    Complete,  // the main application was started automatically
    Failed,    // the screen asked for a key press, then started it
    Updating,  // did not end within its number of frames
    Killed,    // by the fault
    Crashed,
    Hung,
};
const char* nameOf(RunEnd end);

struct UpdateRun {
    RunEnd end = RunEnd::Crashed;
    bool hadWayOut = false;                // the STOP key ended the process
    bool wroteOutside = false;             // a call would have changed something outside VELD
    std::vector<std::string> calls;        // names of the file calls, in order
    std::vector<std::string> loggedLines;  // messages that the log was given, in order
};

struct RunPlan {
    Fault fault;
    bool guiDataLocked = false;
};

// Runs the updater. Presses START on every frame, and STOP when the update has ended. Starting the
// main application fails, so that the exit without it is tested.
UpdateRun runUpdate(const DeviceFolder& device, const RunPlan& plan);
