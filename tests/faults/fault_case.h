// One case of the matrix: a device, a fault in one run, and the runs after it.
#pragma once

#include <array>
#include <string>

#include "tests/faults/device_states.h"
#include "tests/faults/fault.h"
#include "tests/faults/invariants.h"

struct FaultCase {
    StartState state;
    Fault fault;
    bool newerKeyLater;  // the run afterwards has another key than the one that was struck
};

// Plain data: worker processes hand it over in shared memory.
struct CaseResult {
    bool done = false;
    RunEnd first = RunEnd::Crashed;   // the run that was struck
    RunEnd second = RunEnd::Crashed;  // the run after it
    bool ranThird = false;
    // What the struck run left:
    bool kept = false;           // what was installed is complete, or replaced
    bool unnoticed = false;      // it ended complete, with other files live than the key's
    bool mixed = false;          // one component new, the other as before
    bool noApplication = false;  // no main application to start
    std::array<unsigned char, INVARIANT_COUNT> violations{};
    std::array<unsigned char, INVARIANT_COUNT> unexplained{};
    std::array<bool, WEAKNESS_COUNT> weaknesses{};
    std::array<char, 240> notes{};
};

CaseResult runCase(const FaultCase& faultCase);

// The names of the file calls of a whole run without a fault.
std::vector<std::string> callsOfAWholeRun(StartState state);
