// One case of the matrix: a starting state, a fault in the first run, and the runs after it.
#pragma once

#include "tests/faults/checks.h"
#include "tests/faults/device_states.h"

struct FaultCase {
    std::string start;
    std::string call;  // its name
    Fault fault;
    bool newerKeyLater;  // the later run has another key than the faulty one
};

// Returns how the faulty run ended, what it left, and what does not hold.
Remarks runCase(const FaultCase& faultCase);
