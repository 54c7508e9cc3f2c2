// What must hold after every run, whatever struck it.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/faults/update_run.h"
#include "tests/helpers/device_folder.h"

enum class Invariant {
    NothingLost,       // what was installed is complete, live or as the backup, until replaced
    LaterRunSucceeds,  // a run without a fault ends complete, with exactly the key's files live
    LogTellsTheTruth,
    NothingElseTouched,
    AlwaysAWayOut,  // no crash, no hang, and the STOP key ends the process
};
constexpr std::size_t INVARIANT_COUNT = 5;

// Where the order of the update's steps, which stays as it is, breaks an invariant.
enum class Weakness {
    BackupIsTheLastCopy,   // a component that is missing has its backup deleted all the same
    MissingGuiDataFails,   // all is installed, but the move of the missing folder set the flag
    StrayStagedFile,       // a file of an interrupted update from another key is installed too
    StagedFileIsReadOnly,  // one that a kill left read-only is not overwritten by the other key's
};
constexpr std::size_t WEAKNESS_COUNT = 4;
const char* nameOf(Weakness weakness);

struct Finding {
    Invariant invariant;
    std::optional<Weakness> weakness;  // none: a violation that nothing explains
    std::string what;
};
using Findings = std::vector<Finding>;

// `original` is the device before the first run, `now` after the last, which had the key in it.
void checkNothingLost(const Tree& original, const Tree& now, Findings& findings);

// What is in place after a run that was ended from outside: the old folder or the new one, whole.
void checkInPlaceIsWhole(const Tree& original, const Tree& now, Findings& findings);

struct CleanRun {
    Tree before;
    Tree after;
    std::set<std::string> readOnlyBefore;  // files in the staging folder, relative to it
    UpdateRun run;
};
void checkLaterRun(const CleanRun& clean, Findings& findings);

void checkLog(const UpdateRun& run, const Tree& now, Findings& findings);
void checkNothingElseTouched(const UpdateRun& run, const Tree& before, const Tree& now,
                             Findings& findings);
void checkWayOut(const UpdateRun& run, const Fault& fault, Findings& findings);
