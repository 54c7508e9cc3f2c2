// Rehearses an update: runs the real updater on a copy of a device with the key plugged in.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tools/host/file_changes.h"
#include "tools/updatekey/check/check.h"

struct RehearseOptions {
    std::filesystem::path key;
    std::filesystem::path device;                // a device folder; only a copy is changed
    std::filesystem::path updater;               // empty: the updater installed with this program
    std::filesystem::path keep;                  // where to keep the updated device; empty: nowhere
    bool hidden = false;                         // use a virtual screen even if there is a display
    int timeout = 600;                           // in seconds; the updater is then ended
    std::function<void(double seconds)> waited;  // called regularly while the updater runs
};

struct RehearseReport {
    CheckReport check;
    bool rehearsed = false;    // false when the device would not accept the key
    int32_t state = 0;         // the outcome according to the log, an UpdateState
    bool asPredicted = false;  // state and installed files match the prediction
    bool startsHere = false;   // this computer can start the application
    bool applicationStarted = false;
    bool timedOut = false;
    int exitCode = 0;  // the updater's; -1 when it had to be killed
    double seconds = 0;
    long frames = -1;  // drawn by the updater; -1 when they were not counted
    std::string log;
    std::string output;               // what the updater wrote to the standard output and error
    std::vector<FileChange> changes;  // on the flash disk, by path below "FlashDisk"
};

// Runs the rehearsal. Throws std::runtime_error when it cannot be set up, or when the updater does
// not start, for instance without a display.
RehearseReport rehearse(const RehearseOptions& options, CheckOptions check);
