// Plays an update through: the real updater on a copy of a device, with the key plugged in.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/updatekey/check.h"

struct RehearseOptions {
    std::filesystem::path key;
    std::filesystem::path device;   // a device folder; it is copied and stays as it is
    std::filesystem::path updater;  // the updater's program; empty for the one that came with this
    std::filesystem::path keep;     // where the device is left afterwards; empty for nowhere
    bool hidden = false;            // on a screen of its own even if there is a display
    int timeout = 600;              // seconds after which the updater is ended
    CheckOptions check;
    std::function<void(double seconds)> waited;  // told now and then while the updater runs
};

struct RehearseReport {
    CheckReport check;
    bool rehearsed = false;    // false when the device would not see the key
    int32_t state = 0;         // what the log says of the outcome, as UpdateState numbers it
    bool asPredicted = false;  // state and installed files are those that the check foretold
    bool startsHere = false;   // the application is one that this computer can start
    bool applicationStarted = false;
    bool timedOut = false;
    int exitCode = 0;  // the updater's; -1 when it had to be ended
    double seconds = 0;
    long frames = -1;  // -1 when they could not be counted
    std::string log;
    std::string output;  // what the updater wrote to the standard output and error
    std::map<std::string, char> differences;  // '+', '-' or '~' by path below "FlashDisk"
};

// Throws std::runtime_error when the rehearsal cannot be set up, or the updater found no screen.
RehearseReport rehearse(const RehearseOptions& options);
