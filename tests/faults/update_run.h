// One run of the updater without a window, in a separate process.
#pragma once

#include <string>
#include <vector>

#include "tests/faults/fault.h"
#include "tests/helpers/device_folder.h"

struct UpdateRun {
    // "complete" when the main application was started automatically, "failed" when the screen
    // asked for a key press first, "endless", "killed" by the fault, "hung" or "crashed".
    std::string end;
    bool hadWayOut = false;                // the STOP key ended the process
    bool wroteOutside = false;             // a call would have changed something outside VELD
    std::vector<std::string> calls;        // names of the counted calls, in order
    std::vector<std::string> loggedLines;  // messages that the log was given, in order
};

// Runs the updater. Presses START on every frame, and STOP when the update has ended. Starting the
// main application fails, so that the exit without it is tested. When the GUI data is locked, its
// folder cannot be moved.
UpdateRun runUpdate(const DeviceFolder& device, const Fault& fault = {},
                    bool guiDataIsLocked = false);
