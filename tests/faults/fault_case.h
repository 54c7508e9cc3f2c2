// One case of the matrix: a starting state, a fault in the first run, and the runs after it.
#pragma once

#include <array>
#include <string>

#include "tests/faults/advice.h"
#include "tests/faults/device_states.h"
#include "tests/faults/fault.h"
#include "tests/faults/invariants.h"

struct FaultCase {
    StartState state;
    Fault fault;
    bool newerKeyLater;  // the later run has another key than the faulty one
};

// Plain data, because worker processes write it into shared memory.
struct CaseResult {
    bool done = false;
    RunEnd first = RunEnd::Crashed;   // the run with the fault
    RunEnd second = RunEnd::Crashed;  // the run after it
    // What the faulty run left:
    bool kept = false;           // the old installation is complete, or replaced
    bool unnoticed = false;      // reported complete, but the installed files differ
    bool mixed = false;          // one component is new, the other old
    bool noApplication = false;  // there is no main application to start
    AdviceOutcome advice;        // of "updatekey diagnose", and whether following it helped
    std::array<unsigned char, INVARIANT_COUNT> violations{};
    std::array<unsigned char, INVARIANT_COUNT> unexplained{};
    std::array<bool, WEAKNESS_COUNT> weaknesses{};
    std::array<char, 240> notes{};
};

CaseResult runCase(const FaultCase& faultCase);

// Returns the names of the file calls of a complete run without a fault.
std::vector<std::string> callsOfAWholeRun(StartState state);
