// The invariants that must hold after every run, whatever fault occurred.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/faults/update_run.h"
#include "tests/helpers/device_folder.h"

enum class Invariant {
    NothingLost,       // the old installation is complete, live or as backup, until replaced
    LaterRunSucceeds,  // a later run completes and installs exactly the key's files
    LogTellsTheTruth,
    NothingElseTouched,
    AlwaysAWayOut,  // no crash, no hang, and the STOP key ends the process
};
constexpr std::size_t INVARIANT_COUNT = 5;

// Known violations, caused by the order of the update's steps. Kept.
enum class Weakness {
    BackupIsTheLastCopy,   // the backup of a missing component is deleted too
    MissingGuiDataFails,   // everything is installed, but the failed move is reported
    StrayStagedFile,       // a file staged from another key is installed too
    StagedFileIsReadOnly,  // a staged file left read-only is not overwritten
};
constexpr std::size_t WEAKNESS_COUNT = 4;
const char* nameOf(Weakness weakness);

struct Violation {
    Invariant invariant;
    std::optional<Weakness> weakness;  // none: an unexplained violation
    std::string what;
};
using Violations = std::vector<Violation>;

// `original` is the device before the first run; `now` is the device after the last run, whose key
// is still plugged in.
void checkNothingLost(const Tree& original, const Tree& now, Violations& findings);

// Checks that after a killed run each folder in place is the old one or the new one, complete.
void checkInPlaceIsWhole(const Tree& original, const Tree& now, Violations& findings);

struct CleanRun {
    Tree before;
    Tree after;
    std::set<std::string> readOnlyBefore;  // files in the staging folder, relative to it
    UpdateRun run;
};
void checkLaterRun(const CleanRun& clean, Violations& findings);

void checkLog(const UpdateRun& run, const Tree& now, Violations& findings);
void checkNothingElseTouched(const UpdateRun& run, const Tree& before, const Tree& now,
                             Violations& findings);
void checkWayOut(const UpdateRun& run, const Fault& fault, Violations& findings);
