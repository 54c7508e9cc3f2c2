// What must hold after every run, whatever fault occurred. Each check adds to `remarks` what does
// not hold: as known when it is a weakness that follows from the order of the update's steps
// (kept), otherwise as wrong.
#pragma once

#include <set>

#include "tests/faults/update_run.h"

using Remarks = std::vector<std::string>;

constexpr char WRONG[] = "WRONG: ";
inline std::string wrong(const std::string& what) {
    return WRONG + what;
}
inline std::string known(const std::string& what) {
    return "known: " + what;
}

// An installation is complete, in its place or as the backup, until the new one is in its place,
// complete. `original` is the device before the first run; `now` is the device after the last run,
// whose key is still plugged in.
void checkNothingLost(const Tree& original, const Tree& now, Remarks& remarks);

// After a killed run each folder in its place is the old one or the new one, complete.
void checkInPlaceIsWhole(const Tree& original, const Tree& now, Remarks& remarks);

// A run without a fault completes and installs exactly the key's files. `readOnly` are the files
// that were read-only in the staging folder before it, relative to that.
void checkCleanRun(const UpdateRun& run, const Tree& before, const Tree& after,
                   const std::set<std::string>& readOnly, Remarks& remarks);

// The log tells the truth, nothing but the installation has changed, and there was no crash, no
// hang, and a way out.
void checkAnyRun(const UpdateRun& run, const Tree& before, const Tree& now, Remarks& remarks);
